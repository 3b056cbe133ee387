import QtQuick
import QtQuick.Controls.Basic
import Tessary.Kit
import Tessary.Shelf

/// Covers in rows, each row on its board. Arrow keys go from cover to cover, Return opens, F2 restyles, Delete asks.
GridView {
    id: grid

    required property ShelfModel shelf
    signal opened(string id)
    signal startReview()
    signal restyleAsked(string id)
    signal deletionAsked(string id, string name, int pages, string pagesText)

    /// Right of the boards, for the scroll bar.
    readonly property int gutter: 12
    readonly property int shelfWidth: width - gutter
    readonly property int columns: Math.max(2, Math.floor(shelfWidth / 184))
    readonly property int rows: Math.ceil(count / columns)
    readonly property NotebookCell current: currentItem as NotebookCell
    /// A key means the current notebook, not the button above.
    readonly property bool onCell: current !== null && current.activeFocus
    /// The user last moved by key, not by pointer.
    property bool byKey: false

    function showNotebook(id: string) {
        grid.currentIndex = grid.shelf.rowOf(id);
        grid.currentItem?.forceActiveFocus();
    }
    function askDeletion(cell: NotebookCell) {
        if (!cell.isLoose)
            grid.deletionAsked(cell.notebookId, cell.name, cell.pages, cell.pagesText);
    }

    onCurrentItemChanged: if (grid.activeFocus && grid.currentItem) grid.currentItem.forceActiveFocus()

    clip: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    cellWidth: Math.floor(shelfWidth / columns)
    cellHeight: 296
    cacheBuffer: 600
    model: shelf
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Notebooks")
    ScrollBar.vertical: Scrollbar {}

    Keys.onPressed: event => { grid.byKey = true; event.accepted = false }
    Keys.onReturnPressed: if (grid.onCell) grid.opened(grid.current.notebookId)
    Keys.onEnterPressed: if (grid.onCell) grid.opened(grid.current.notebookId)
    Keys.onDeletePressed: if (grid.onCell) grid.askDeletion(grid.current)
    Keys.onMenuPressed: if (grid.onCell) menu.openFor(grid.current)
    Shortcut {
        sequence: "F2"
        enabled: grid.onCell && !grid.current.isLoose
        onActivated: grid.restyleAsked(grid.current.notebookId)
    }
    Shortcut {
        sequence: "Shift+F10"
        enabled: grid.onCell
        onActivated: menu.openFor(grid.current)
    }

    header: DueStrip {
        width: grid.shelfWidth
        shelf: grid.shelf
        onStart: grid.startReview()
    }

    // Boards for what can be seen, however many rows there are.
    Repeater {
        parent: grid.contentItem
        model: Math.min(grid.rows, Math.ceil(grid.height / grid.cellHeight) + 1)
        delegate: ShelfBoard {
            required property int index
            readonly property int row: index + Math.max(0, Math.floor(grid.contentY / grid.cellHeight))
            parent: grid.contentItem
            z: -1
            visible: row < grid.rows
            width: grid.shelfWidth
            y: row * grid.cellHeight + 199
        }
    }

    delegate: NotebookCell {
        width: grid.cellWidth
        height: grid.cellHeight
        byKey: grid.byKey
        onPressed: { grid.byKey = false; grid.currentIndex = index }
        onClicked: grid.opened(notebookId)
        onMenuAsked: { grid.currentIndex = index; menu.openFor(this) }
    }

    add: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.turn } }
    move: Transition { NumberAnimation { properties: "x,y"; duration: Theme.slide; easing.type: Easing.OutQuint } }
    displaced: Transition { NumberAnimation { properties: "x,y"; duration: Theme.slide; easing.type: Easing.OutQuint } }

    NotebookMenu {
        id: menu
        onOpenAsked: cell => grid.opened(cell.notebookId)
        onRestyleAsked: cell => grid.restyleAsked(cell.notebookId)
        onPinAsked: cell => grid.shelf.setPinned(cell.notebookId, !cell.pinned)
        onDeletionAsked: cell => grid.askDeletion(cell)
    }
}
