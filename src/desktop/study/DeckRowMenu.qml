import QtQuick
import Tessary.Kit
import Tessary.Study

/// What can be done with one card.
PopupMenu {
    id: menu

    required property DeckModel deck
    property Item row: null
    signal edit(string card)
    signal openPage(string page)

    readonly property string card: row?.cardId ?? ""
    readonly property string page: row?.pageId ?? ""
    readonly property bool flagged: row?.flagged ?? false
    readonly property bool suspended: row?.suspended ?? false

    PopupMenuItem {
        text: qsTr("Edit")
        iconName: "pen"
        keyText: qsTr("Enter")
        onTriggered: menu.edit(menu.card)
    }
    PopupMenuItem {
        text: qsTr("Show its page")
        iconName: "page"
        onTriggered: menu.openPage(menu.page)
    }
    PopupMenuItem {
        text: menu.flagged ? qsTr("Take the flag off") : qsTr("Flag")
        iconName: "flag"
        keyText: "F"
        onTriggered: menu.deck.flag(menu.card, !menu.flagged)
    }
    PopupMenuItem {
        text: menu.suspended ? qsTr("Back into reviews") : qsTr("Suspend")
        iconName: "pause"
        keyText: "S"
        onTriggered: menu.deck.suspend(menu.card, !menu.suspended)
    }
    PopupMenuItem {
        text: qsTr("Start over as new")
        iconName: "undo"
        onTriggered: menu.deck.reset(menu.card)
    }
    PopupMenuLine {}
    PopupMenuItem {
        text: qsTr("Delete")
        iconName: "trash"
        keyText: qsTr("Del")
        danger: true
        onTriggered: menu.deck.remove(menu.card)
    }
}
