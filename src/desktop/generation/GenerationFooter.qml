import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Generation

/// What can be done next.
Item {
    id: footer

    required property GenerationModel generation
    required property GenerationChoices choices
    signal start()
    signal retry()
    signal reconsider()
    signal close()

    readonly property bool choosing: generation.phase === GenerationModel.Idle
    readonly property bool empty: generation.written === 0
    readonly property bool over: !choosing && !generation.running
    readonly property string note: choosing ? choices.problem
        : generation.running ? qsTr("You can close this window. The cards keep coming in the background.")
        : empty ? "" : generation.kept === 1 ? qsTr("1 card in the deck") : qsTr("%1 cards in the deck").arg(generation.kept)

    implicitHeight: 80

    Divider { width: parent.width }
    RowLayout {
        anchors { fill: parent; leftMargin: 24; rightMargin: 24 }
        spacing: 12

        Txt {
            text: footer.note
            color: Theme.ink2
            wrap: true
            maximumLineCount: 2
            Layout.fillWidth: true
        }
        PushButton {
            visible: footer.choosing
            kind: "ghost"
            text: qsTr("Cancel")
            onClicked: footer.close()
        }
        PushButton {
            visible: footer.choosing
            kind: "primary"
            enabled: footer.choices.problem === ""
            text: qsTr("Generate cards")
            keyText: qsTr("Ctrl ↵")
            onClicked: footer.start()
        }
        PushButton {
            visible: footer.generation.running
            kind: "ghost"
            iconName: "stop"
            text: qsTr("Stop")
            onClicked: footer.generation.cancel()
        }
        PushButton {
            visible: footer.generation.running
            text: qsTr("Go on reading")
            onClicked: footer.close()
        }
        PushButton {
            visible: footer.over && !footer.empty
            kind: "ghost"
            iconName: "undo"
            text: qsTr("Undo all")
            onClicked: {
                footer.close();
                footer.generation.undoAll();
            }
        }
        PushButton {
            visible: footer.over && !footer.empty
            kind: "primary"
            text: qsTr("Done")
            onClicked: footer.close()
        }
        PushButton {
            visible: footer.over && footer.empty
            kind: "ghost"
            text: qsTr("Change the choices")
            onClicked: footer.reconsider()
        }
        PushButton {
            visible: footer.over && footer.empty
            kind: "primary"
            iconName: "refresh"
            text: qsTr("Try again")
            onClicked: footer.retry()
        }
    }
}
