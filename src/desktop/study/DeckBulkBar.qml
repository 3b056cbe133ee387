import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Study

/// What can be done with all cards that are picked.
Rectangle {
    id: bar

    required property DeckModel deck
    signal exportAsked()

    implicitHeight: 40
    radius: 10
    color: Theme.accentSoft
    border.width: 1
    border.color: Theme.accentMark
    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("Picked cards")

    component Deed: PushButton {
        kind: "ghost"
        controlSize: 28
        foreground: Theme.ink
    }

    RowLayout {
        anchors { fill: parent; leftMargin: 14; rightMargin: 6 }
        spacing: 2
        Txt {
            text: bar.deck.selected === 1 ? qsTr("1 card picked") : qsTr("%1 cards picked").arg(bar.deck.selected)
            weight: 600
            Layout.fillWidth: true
        }
        Deed {
            visible: bar.deck.selected < bar.deck.count
            text: qsTr("Pick all %1").arg(bar.deck.count)
            onClicked: bar.deck.selectAll()
        }
        Deed {
            text: qsTr("Suspend")
            onClicked: bar.deck.suspend("", true)
        }
        Deed {
            text: qsTr("Flag")
            onClicked: bar.deck.flag("", true)
        }
        Deed {
            text: qsTr("Delete")
            foreground: Theme.bad
            onClicked: bar.deck.remove("")
        }
        IconButton {
            iconName: "more"
            label: qsTr("More for the picked cards")
            controlSize: 28
            onClicked: menu.popup()
            PopupMenu {
                id: menu
                PopupMenuItem {
                    text: qsTr("Back into reviews")
                    iconName: "refresh"
                    onTriggered: bar.deck.suspend("", false)
                }
                PopupMenuItem {
                    text: qsTr("Take the flags off")
                    iconName: "flag"
                    onTriggered: bar.deck.flag("", false)
                }
                PopupMenuItem {
                    text: qsTr("Start over as new")
                    iconName: "undo"
                    onTriggered: bar.deck.reset("")
                }
                PopupMenuItem {
                    text: qsTr("Export…")
                    iconName: "upload"
                    onTriggered: bar.exportAsked()
                }
            }
        }
        IconButton {
            iconName: "close"
            label: qsTr("Let the picked cards go")
            controlSize: 28
            onClicked: bar.deck.clearSelection()
        }
    }
}
