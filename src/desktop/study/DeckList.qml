import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Study

/// The cards of the deck. The arrow keys go through them; Space picks, Enter opens, Delete deletes, F flags, S
/// suspends.
ColumnLayout {
    id: pane

    required property DeckModel deck
    signal edit(string card)
    signal openPage(string page)

    readonly property Item view: list

    /// Of a card, or with an empty identity of what is picked; else of the current row.
    function doTo(deed: var) {
        if (pane.deck.selected > 0)
            deed("");
        else if (list.currentItem)
            deed(list.currentItem.cardId);
    }

    spacing: 0

    DeckColumns {
        id: grid
        width: list.width - 12
    }
    DeckHead {
        columns: grid
        visible: list.count > 0
        Layout.fillWidth: true
        Layout.preferredHeight: 28
    }
    Divider {
        visible: list.count > 0
        Layout.fillWidth: true
    }
    ListView {
        id: list
        clip: true
        model: pane.deck
        focus: true
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        T.ScrollBar.vertical: Scrollbar {}
        Layout.fillWidth: true
        Layout.fillHeight: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Cards")

        Keys.onPressed: event => {
            event.accepted = true;
            const item = list.currentItem;
            if (event.matches(StandardKey.SelectAll))
                pane.deck.selectAll();
            else if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && item)
                pane.edit(item.cardId);
            else if (event.key === Qt.Key_Delete)
                pane.doTo(card => pane.deck.remove(card));
            else if (event.key === Qt.Key_F && event.modifiers === Qt.NoModifier && item)
                pane.doTo(card => pane.deck.flag(card, !item.flagged));
            else if (event.key === Qt.Key_S && event.modifiers === Qt.NoModifier && item)
                pane.doTo(card => pane.deck.suspend(card, !item.suspended));
            else if (event.key === Qt.Key_Escape && pane.deck.selected > 0)
                pane.deck.clearSelection();
            else if (event.key === Qt.Key_Home)
                list.currentIndex = 0;
            else if (event.key === Qt.Key_End)
                list.currentIndex = list.count - 1;
            else if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp)
                pane.leap(event.key === Qt.Key_PageDown ? 1 : -1);
            else if (event.modifiers === Qt.ShiftModifier && (event.key === Qt.Key_Up || event.key === Qt.Key_Down))
                pane.extend(event.key === Qt.Key_Down ? 1 : -1);
            else
                event.accepted = false;
        }

        delegate: DeckRow {
            columns: grid
            width: grid.width
            current: list.activeFocus && index === list.currentIndex
            onEdit: {
                list.currentIndex = index;
                pane.edit(cardId);
            }
            onPick: extend => {
                list.currentIndex = index;
                extend ? pane.deck.extendTo(index) : pane.deck.toggle(index);
            }
            Keys.onSpacePressed: pick(false)
            onMenu: {
                list.currentIndex = index;
                menu.popup();
            }
        }
    }
    function leap(way: int) {
        const rows = Math.max(1, Math.floor(list.height / 44) - 1);
        list.currentIndex = Math.max(0, Math.min(list.count - 1, list.currentIndex + way * rows));
    }
    function extend(way: int) {
        if (pane.deck.selected === 0)
            pane.deck.toggle(list.currentIndex);
        list.currentIndex = Math.max(0, Math.min(list.count - 1, list.currentIndex + way));
        pane.deck.extendTo(list.currentIndex);
    }

    DeckRowMenu {
        id: menu
        deck: pane.deck
        row: list.currentItem
        onEdit: card => pane.edit(card)
        onOpenPage: page => pane.openPage(page)
    }
}
