import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Study

/// The decks, those with the most to do first. A few at first, all when asked for.
Surface {
    id: table

    required property StudyDecksModel decks
    property bool all: false
    signal open(string place)
    signal study(string place)

    readonly property int few: 6
    readonly property bool wide: width >= 860

    component Head: Txt {
        size: 12
        weight: 500
        color: Theme.ink2
    }

    implicitHeight: column.implicitHeight + 24

    ColumnLayout {
        id: column
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 20; topMargin: 12 }
        spacing: 0

        RowLayout {
            spacing: 0
            Layout.fillWidth: true
            Layout.preferredHeight: 36
            Txt {
                text: qsTr("Decks")
                size: 15
                weight: 600
                Layout.fillWidth: true
                Accessible.role: Accessible.Heading
            }
            Item {
                visible: table.wide
                Layout.preferredWidth: 110
            }
            Head { text: qsTr("Due"); Layout.preferredWidth: 64 }
            Head { text: qsTr("New"); Layout.preferredWidth: 64 }
            Head { text: qsTr("Recall now"); Layout.preferredWidth: table.wide ? 190 : 130 }
            Head { text: qsTr("Next exam"); Layout.preferredWidth: 100 }
            Item {
                implicitWidth: probe.implicitWidth
                implicitHeight: 28
                PushButton {
                    id: probe
                    visible: false
                    controlSize: 28
                    text: qsTr("Study")
                }
                PushButton {
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    anchors.rightMargin: -10
                    visible: table.decks.count > table.few
                    kind: "ghost"
                    controlSize: 28
                    foreground: Theme.accentText
                    text: table.all ? qsTr("Fewer") : qsTr("All %1").arg(table.decks.count)
                    Accessible.name: table.all ? qsTr("Show fewer decks") : qsTr("Show all decks")
                    onClicked: table.all = !table.all
                }
            }
        }
        ListView {
            id: list
            interactive: false
            model: table.decks
            implicitHeight: 43 * (table.all ? count : Math.min(count, table.few))
            clip: implicitHeight < contentHeight
            Layout.fillWidth: true
            Layout.leftMargin: -8
            Layout.rightMargin: -8
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Decks")
            delegate: DeckLine {
                id: line
                required property int index
                x: 8
                width: list.width - 16
                wide: table.wide
                visible: table.all || index < table.few
                onClicked: table.open(place)
                onStudy: table.study(place)
                Divider { width: parent.width }
            }
        }
    }
}
