import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit

/// One card in the panel.
T.ItemDelegate {
    id: card

    required property string cardId
    required property string front
    required property string shown
    required property string back
    required property string dueText
    required property bool isDue
    required property bool suspended
    required property bool flagged
    signal edit()
    signal flag()
    signal suspend()
    signal remove()

    implicitHeight: column.implicitHeight + 24
    padding: 12
    leftPadding: 14
    hoverEnabled: true
    onClicked: edit()

    Accessible.role: Accessible.Button
    Accessible.name: qsTr("%1, %2").arg(shown).arg(dueText)
    Accessible.onPressAction: clicked()

    background: Surface {
        radius: 10
        elevation: 1
        fill: card.hovered ? Theme.mix(Theme.raised, Theme.ink, 0.03) : Theme.raised
        Rectangle {
            visible: card.isDue
            width: 3
            height: parent.height - 24
            y: 12
            radius: 1.5
            color: Theme.accentMark
        }
        FocusRing { target: card }
    }
    contentItem: ColumnLayout {
        id: column
        spacing: 4
        opacity: card.suspended ? 0.6 : 1
        RowLayout {
            Layout.fillWidth: true
            spacing: 6
            Txt {
                text: card.shown
                weight: 600
                wrap: true
                maximumLineCount: 3
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            Icon {
                visible: card.flagged
                name: "flag"
                size: 16
                color: Theme.warn
                Layout.alignment: Qt.AlignTop
            }
            Txt {
                text: card.dueText
                size: 12
                weight: 600
                color: card.isDue ? Theme.accentText : Theme.ink3
                Layout.alignment: Qt.AlignTop
            }
        }
        Txt {
            text: card.back
            size: 12
            color: Theme.ink2
            wrap: true
            maximumLineCount: 2
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: menu.popup()
    }
    PopupMenu {
        id: menu
        PopupMenuItem {
            text: qsTr("Edit")
            iconName: "pen"
            onTriggered: card.edit()
        }
        PopupMenuItem {
            text: card.flagged ? qsTr("Take the flag off") : qsTr("Flag")
            iconName: "flag"
            onTriggered: card.flag()
        }
        PopupMenuItem {
            text: card.suspended ? qsTr("Back into reviews") : qsTr("Suspend")
            iconName: "pause"
            onTriggered: card.suspend()
        }
        PopupMenuItem {
            text: qsTr("Delete")
            iconName: "trash"
            danger: true
            onTriggered: card.remove()
        }
    }
}
