import QtQuick
import Tessary.Kit
import Tessary.Pages

/// What can be done with one page of the tree.
PopupMenu {
    id: menu

    required property PageTreeModel tree
    property string page
    property bool pinned: false
    property bool favorite: false
    property bool archived: false
    property bool nested: false
    signal wanted(string id)
    signal moveAsked(string id)

    function openFor(row: PageTreeRow, at: point) {
        menu.page = row.pageId;
        menu.pinned = row.pinned;
        menu.favorite = row.favorite;
        menu.archived = row.archived;
        menu.nested = row.depth > 0;
        menu.popup(row, at.x, at.y);
    }

    PopupMenuItem {
        text: qsTr("New subpage")
        iconName: "plus"
        onTriggered: menu.wanted(menu.tree.addPage(menu.page))
    }
    PopupMenuLine {}
    PopupMenuItem {
        text: menu.pinned ? qsTr("Unpin") : qsTr("Pin to the top")
        iconName: "pin"
        onTriggered: menu.tree.setPinned(menu.page, !menu.pinned)
    }
    PopupMenuItem {
        text: menu.favorite ? qsTr("Take out of the favorites") : qsTr("Add to the favorites")
        iconName: "star"
        onTriggered: menu.tree.setFavorite(menu.page, !menu.favorite)
    }
    PopupMenuItem {
        text: menu.archived ? qsTr("Take out of the archive") : qsTr("Archive")
        iconName: "archive"
        onTriggered: menu.tree.setArchived(menu.page, !menu.archived)
    }
    PopupMenuLine {}
    PopupMenuItem {
        text: qsTr("Make a subpage of the page above")
        iconName: "right"
        keyText: "Ctrl Shift →"
        onTriggered: menu.tree.moveIn(menu.page)
    }
    PopupMenuItem {
        text: qsTr("Move out")
        iconName: "left"
        keyText: "Ctrl Shift ←"
        enabled: menu.nested
        onTriggered: menu.tree.moveOut(menu.page)
    }
    PopupMenuItem {
        text: qsTr("Move to…")
        iconName: "arrow"
        onTriggered: menu.moveAsked(menu.page)
    }
    PopupMenuLine {}
    PopupMenuItem {
        text: qsTr("Move to the Trash")
        iconName: "trash"
        keyText: qsTr("Del")
        danger: true
        onTriggered: menu.tree.remove(menu.page)
    }
}
