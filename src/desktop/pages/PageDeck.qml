import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages
import Tessary.Desk

/// The cards of the open page, and how well they are remembered.
FocusScope {
    id: panel

    required property Desk desk
    property string page
    readonly property int total: deck.total
    signal review()
    signal makeCards()
    signal generate()

    PageDeckModel {
        id: deck
        desk: panel.desk
        pageId: panel.page
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 12
        anchors.topMargin: 0
        spacing: 12

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 36
            Txt {
                text: deck.total === 1 ? qsTr("1 card") : qsTr("%1 cards").arg(deck.total)
                color: Theme.ink2
                Layout.fillWidth: true
                Layout.leftMargin: 4
            }
            IconButton {
                iconName: "plus"
                label: qsTr("New card")
                onClicked: editor.openNew()
            }
        }

        Surface {
            Layout.fillWidth: true
            Layout.preferredHeight: 108
            visible: deck.total > 0
            RowLayout {
                anchors.fill: parent
                anchors.margins: 16
                spacing: 16
                Ring {
                    size: 64
                    value: Math.max(0, deck.recall)
                    Txt {
                        anchors.centerIn: parent
                        text: deck.recall < 0 ? "–" : qsTr("%1%").arg(Math.round(deck.recall * 100))
                        size: 15
                        weight: 600
                    }
                }
                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: 4
                    Txt {
                        text: qsTr("Recall on this page")
                        weight: 600
                        Layout.fillWidth: true
                    }
                    Txt {
                        text: qsTr("%1 due · %2 new").arg(deck.due).arg(deck.fresh)
                        color: Theme.ink2
                        Layout.fillWidth: true
                    }
                    PushButton {
                        controlSize: 28
                        kind: "primary"
                        visible: deck.due > 0
                        text: qsTr("Review %1").arg(deck.due)
                        onClicked: panel.review()
                    }
                }
            }
        }

        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 8
            model: deck
            boundsBehavior: Flickable.StopAtBounds
            delegate: DeckCard {
                width: list.width
                onEdit: editor.openFor(cardId, front, back)
                onFlag: deck.setFlagged(cardId, !flagged)
                onSuspend: deck.setSuspended(cardId, !suspended)
                onRemove: deck.remove(cardId)
            }
            EmptyState {
                anchors.centerIn: parent
                width: parent.width
                visible: list.count === 0
                text: qsTr("No cards yet. Write “Question :: Answer” on the page, or add one here.")
                actionText: qsTr("Generate cards…")
                onAction: panel.generate()
            }
        }
        PushButton {
            Layout.fillWidth: true
            visible: list.count > 0
            iconName: "make"
            text: qsTr("Generate cards…")
            onClicked: panel.generate()
        }
        PushButton {
            Layout.fillWidth: true
            kind: "ghost"
            text: qsTr("Make cards from the text")
            onClicked: panel.makeCards()
        }
    }

    CardSheet {
        id: editor
        deck: deck
    }
}
