import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages

/// Above the page: where it stands, and what can be done with it.
RowLayout {
    id: bar

    required property PageModel page
    property bool pinned: false
    property bool panelShown: false
    property bool canAddSubpage: true
    signal open(string id)
    signal attachAsked()
    signal findAsked()
    signal panelAsked()
    signal subpageAsked()
    signal generateAsked()
    signal pinAsked()
    signal moveAsked()
    signal expiryAsked()
    signal trashAsked()

    spacing: 4

    Repeater {
        model: bar.page.path
        delegate: RowLayout {
            id: step
            required property var modelData
            spacing: 2
            PushButton {
                kind: "ghost"
                controlSize: 28
                text: step.modelData.title === "" ? qsTr("Untitled") : step.modelData.title
                Layout.maximumWidth: 180
                onClicked: bar.open(step.modelData.pageId)
            }
            Icon {
                name: "right"
                size: 14
                color: Theme.ink3
            }
        }
    }
    Txt {
        Layout.fillWidth: true
        Layout.leftMargin: 10
        text: bar.page.words === 1 ? qsTr("Edited %1 · 1 word").arg(bar.page.edited)
                                   : qsTr("Edited %1 · %2 words").arg(bar.page.edited).arg(bar.page.words)
        size: 12
        color: Theme.ink3
    }
    IconButton {
        iconName: "search"
        label: qsTr("Find on the page")
        onClicked: bar.findAsked()
    }
    IconButton {
        iconName: "clip"
        label: qsTr("Attach a PDF")
        enabled: !bar.page.readOnly
        onClicked: bar.attachAsked()
    }
    IconButton {
        iconName: "star"
        label: bar.page.favorite ? qsTr("Take out of the favorites") : qsTr("Add to the favorites")
        checked: bar.page.favorite
        enabled: !bar.page.readOnly
        onClicked: bar.page.favorite = !bar.page.favorite
    }
    IconButton {
        iconName: "panel"
        label: bar.panelShown ? qsTr("Hide the panel") : qsTr("Show cards and outline")
        onClicked: bar.panelAsked()
    }
    IconButton {
        iconName: "more"
        label: qsTr("More")
        onClicked: menu.popup(this, 0, height + 4)
        PopupMenu {
            id: menu
            PopupMenuItem {
                text: qsTr("Generate cards…")
                iconName: "make"
                onTriggered: bar.generateAsked()
            }
            PopupMenuItem {
                text: qsTr("New subpage")
                iconName: "plus"
                onTriggered: bar.subpageAsked()
            }
            PopupMenuItem {
                text: bar.pinned ? qsTr("Unpin") : qsTr("Pin to the top")
                iconName: "pin"
                onTriggered: bar.pinAsked()
            }
            PopupMenuItem {
                text: bar.page.archived ? qsTr("Take out of the archive") : qsTr("Archive")
                iconName: "archive"
                onTriggered: bar.page.archived = !bar.page.archived
            }
            PopupMenuItem {
                text: qsTr("Move to…")
                iconName: "arrow"
                onTriggered: bar.moveAsked()
            }
            PopupMenuLine {}
            PopupMenuItem {
                text: qsTr("Expires tomorrow")
                iconName: "clock"
                onTriggered: bar.page.expireIn(1)
            }
            PopupMenuItem {
                text: qsTr("Expires in a week")
                iconName: "clock"
                onTriggered: bar.page.expireIn(7)
            }
            PopupMenuItem {
                text: qsTr("Expires on a day…")
                iconName: "calendar"
                onTriggered: bar.expiryAsked()
            }
            PopupMenuItem {
                text: qsTr("Does not expire")
                iconName: "close"
                enabled: bar.page.expiryText !== ""
                onTriggered: bar.page.setExpiryDay("")
            }
            PopupMenuLine {}
            PopupMenuItem {
                text: qsTr("Move to the Trash")
                iconName: "trash"
                danger: true
                onTriggered: bar.trashAsked()
            }
        }
    }
}
