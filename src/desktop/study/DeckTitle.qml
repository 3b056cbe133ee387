import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Study

/// Which deck it is and how it stands, and what can be done with the whole of it.
RowLayout {
    id: head

    required property DeckModel deck
    signal back()
    signal add()
    signal review()
    signal importAsked()
    signal exportAsked()

    spacing: 12

    IconButton {
        iconName: "left"
        label: qsTr("Back to Study")
        controlSize: 36
        Layout.leftMargin: -8
        onClicked: head.back()
    }
    Swatch {
        visible: head.deck.color !== ""
        color: head.deck.color
        size: 28
    }
    ColumnLayout {
        spacing: 0
        Layout.fillWidth: true
        Txt {
            text: head.deck.heading
            size: 24
            weight: 700
            Layout.fillWidth: true
            Accessible.role: Accessible.Heading
        }
        Txt {
            readonly property string count: head.deck.total.toLocaleString(Qt.locale("en"), "f", 0)
            readonly property string cards: head.deck.total === 1 ? qsTr("1 card") : qsTr("%1 cards").arg(count)
            visible: head.deck.ready
            text: head.deck.recall < 0 ? cards
                : qsTr("%1 · %2 % likely to be recalled now").arg(cards).arg(Math.round(head.deck.recall * 100))
            color: Theme.ink2
            Layout.fillWidth: true
        }
    }
    IconButton {
        iconName: "more"
        label: qsTr("More for this deck")
        controlSize: 36
        onClicked: menu.popup()
        PopupMenu {
            id: menu
            PopupMenuItem {
                text: qsTr("Import cards…")
                iconName: "download"
                onTriggered: head.importAsked()
            }
            PopupMenuItem {
                text: qsTr("Export the deck…")
                iconName: "upload"
                enabled: head.deck.total > 0
                onTriggered: head.exportAsked()
            }
        }
    }
    PushButton {
        iconName: "plus"
        text: qsTr("Add card")
        onClicked: head.add()
    }
    PushButton {
        visible: head.deck.due > 0
        kind: "primary"
        text: qsTr("Review %1").arg(head.deck.due)
        onClicked: head.review()
    }
}
