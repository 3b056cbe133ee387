import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages
import Tessary.Desk

/// What stands beside the page: its cards, or its outline.
FocusScope {
    id: panel

    required property Desk desk
    property string page
    /// "cards" or "outline".
    property string face: "cards"
    signal faceAsked(string face)
    signal review()
    signal makeCards()
    signal generate()
    signal goTo(int position)
    signal hideAsked()

    PageOutline {
        id: outline
        desk: panel.desk
        pageId: panel.page
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 4

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 36
            Layout.topMargin: 14
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            spacing: 4
            PanelTab {
                text: qsTr("Cards")
                count: deck.total
                current: panel.face === "cards"
                onClicked: panel.faceAsked("cards")
            }
            PanelTab {
                text: qsTr("Outline")
                count: outline.count
                current: panel.face === "outline"
                onClicked: panel.faceAsked("outline")
            }
            Item { Layout.fillWidth: true }
            IconButton {
                iconName: "close"
                label: qsTr("Hide the panel")
                onClicked: panel.hideAsked()
            }
        }
        PageDeck {
            id: deck
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: panel.face === "cards"
            desk: panel.desk
            page: panel.page
            onReview: panel.review()
            onMakeCards: panel.makeCards()
            onGenerate: panel.generate()
        }
        OutlineList {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: 8
            Layout.rightMargin: 8
            Layout.topMargin: 4
            visible: panel.face === "outline"
            outline: outline
            onGoTo: position => panel.goTo(position)
        }
    }
}
