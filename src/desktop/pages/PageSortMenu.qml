import QtQuick
import Tessary.Kit
import Tessary.Pages

/// What the list is sorted by, and which way.
PopupMenu {
    id: menu

    required property PageListing listing
    readonly property bool byTitle: listing.sortMode === "title"

    PopupMenuItem {
        text: qsTr("Created")
        checkable: true
        checked: menu.listing.sortMode === "created"
        onTriggered: menu.listing.sortMode = "created"
    }
    PopupMenuItem {
        text: qsTr("Edited")
        checkable: true
        checked: menu.listing.sortMode === "edited"
        onTriggered: menu.listing.sortMode = "edited"
    }
    PopupMenuItem {
        text: qsTr("Title")
        checkable: true
        checked: menu.byTitle
        onTriggered: menu.listing.sortMode = "title"
    }
    PopupMenuLine {}
    PopupMenuItem {
        text: menu.byTitle ? qsTr("A to Z") : qsTr("Newest first")
        checkable: true
        checked: menu.listing.newestFirst
        onTriggered: menu.listing.newestFirst = true
    }
    PopupMenuItem {
        text: menu.byTitle ? qsTr("Z to A") : qsTr("Oldest first")
        checkable: true
        checked: !menu.listing.newestFirst
        onTriggered: menu.listing.newestFirst = false
    }
}
