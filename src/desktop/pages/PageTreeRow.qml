import QtQuick
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages

/// One page in the tree. Right click for what can be done with it.
T.ItemDelegate {
    id: row

    required property PageTreeModel tree
    required property string pageId
    required property string title
    required property int depth
    required property bool hasChildren
    required property bool expanded
    required property int due
    property bool selected: false
    signal wanted(string id)

    implicitHeight: 32
    leftPadding: 8 + depth * 16
    rightPadding: 8
    hoverEnabled: true

    Accessible.role: Accessible.TreeItem
    Accessible.name: due > 0 ? qsTr("%1, %2 due").arg(title).arg(due) : title
    Accessible.selected: selected
    Accessible.onPressAction: clicked()

    background: Item {
        Surface {
            anchors.fill: parent
            visible: row.selected
            radius: 8
            elevation: 1
            fill: Theme.raised
        }
        Rectangle {
            anchors.fill: parent
            visible: !row.selected && row.hovered
            radius: 8
            color: Theme.alpha(Theme.ink, 0.05)
        }
        FocusRing { target: row }
    }
    contentItem: Item {
        IconButton {
            id: fold
            visible: row.hasChildren
            iconName: row.expanded ? "down" : "right"
            label: row.expanded ? qsTr("Fold") : qsTr("Unfold")
            controlSize: 28
            x: -6
            anchors.verticalCenter: parent.verticalCenter
            onClicked: row.tree.toggle(row.pageId)
        }
        Txt {
            x: 22
            width: parent.width - x - (count.visible ? count.width + 6 : 0)
            anchors.verticalCenter: parent.verticalCenter
            text: row.title
            weight: row.selected || row.depth === 0 ? 600 : 500
            color: row.selected ? Theme.ink : Theme.ink2
        }
        Txt {
            id: count
            visible: row.due > 0
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: row.due
            size: 12
            weight: 600
            color: Theme.accentText
        }
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: menu.popup()
    }
    PopupMenu {
        id: menu
        PopupMenuItem {
            text: qsTr("New subpage")
            iconName: "plus"
            onTriggered: row.wanted(row.tree.addPage(row.pageId))
        }
        PopupMenuItem {
            text: qsTr("Make it a top-level page")
            iconName: "left"
            enabled: row.depth > 0
            onTriggered: row.tree.setParentOf(row.pageId, "")
        }
        PopupMenuItem {
            text: qsTr("Move to the Trash")
            iconName: "trash"
            danger: true
            onTriggered: row.tree.remove(row.pageId)
        }
    }
}
