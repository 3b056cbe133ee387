import QtQuick
import Tessary.Kit

/// What can be done with the notebook of a cell.
PopupMenu {
    id: menu

    property NotebookCell cell
    readonly property bool real: cell !== null && !cell.isLoose
    signal openAsked(NotebookCell cell)
    signal restyleAsked(NotebookCell cell)
    signal pinAsked(NotebookCell cell)
    signal deletionAsked(NotebookCell cell)

    function openFor(target: NotebookCell) {
        menu.cell = target;
        menu.popup(target, target.menuPoint.x, target.menuPoint.y);
    }

    PopupMenuItem {
        text: qsTr("Open")
        iconName: "book"
        keyText: qsTr("Enter")
        onTriggered: menu.openAsked(menu.cell)
    }
    PopupMenuItem {
        visible: menu.real
        text: qsTr("Rename and restyle…")
        iconName: "pen"
        keyText: "F2"
        onTriggered: menu.restyleAsked(menu.cell)
    }
    PopupMenuItem {
        visible: menu.real
        text: menu.cell?.pinned ? qsTr("Unpin") : qsTr("Pin to the front")
        iconName: "pin"
        onTriggered: menu.pinAsked(menu.cell)
    }
    PopupMenuLine {
        visible: menu.real
        height: visible ? implicitHeight : 0
    }
    PopupMenuItem {
        visible: menu.real
        text: qsTr("Delete…")
        iconName: "trash"
        keyText: qsTr("Del")
        danger: true
        onTriggered: menu.deletionAsked(menu.cell)
    }
}
