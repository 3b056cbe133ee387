import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Generation

/// Who writes the cards, and whether they can; opens the list of all.
T.AbstractButton {
    id: button

    required property GenerationChoices choices

    readonly property bool looking: choices.readiness === GenerationChoices.Looking
    readonly property bool ready: choices.readiness === GenerationChoices.Ready
    readonly property string stateText: looking ? qsTr("Checking…") : ready ? qsTr("Ready") : qsTr("Not ready")

    implicitHeight: 60
    leftPadding: 12
    rightPadding: 14
    text: choices.providers[choices.provider]
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.ComboBox
    Accessible.name: qsTr("Provider: %1, %2").arg(text).arg(stateText)
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()
    onClicked: menu.open()

    background: Surface {
        radius: 10
        stroke: Theme.edge
        fill: button.down ? Theme.mix(Theme.raised, Theme.ink, 0.09)
            : button.hovered ? Theme.mix(Theme.raised, Theme.ink, 0.05) : Theme.raised
        FocusRing { target: button; corner: 10 }
    }
    contentItem: RowLayout {
        spacing: 12
        Rectangle {
            implicitWidth: 36
            implicitHeight: 36
            radius: 8
            color: Theme.sunken
            Icon {
                anchors.centerIn: parent
                name: button.choices.staysHere ? "device" : "cloud"
                color: Theme.ink
            }
        }
        ColumnLayout {
            spacing: 0
            Txt {
                text: button.text
                weight: 600
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            Txt {
                text: button.choices.providerDetail
                size: 12
                color: Theme.ink2
                Layout.fillWidth: true
                Accessible.ignored: true
            }
        }
        Chip {
            text: button.stateText
            controlSize: 24
            tint: button.looking ? "transparent" : button.ready ? Theme.good : Theme.warn
            Accessible.ignored: true
        }
        Icon {
            name: "down"
            size: 16
        }
    }

    PopupMenu {
        id: menu
        y: button.height + 4
        Repeater {
            model: button.choices.providers
            delegate: PopupMenuItem {
                required property int index
                required property string modelData
                text: modelData
                checkable: true
                checked: index === button.choices.provider
                onTriggered: button.choices.provider = index
            }
        }
    }
}
