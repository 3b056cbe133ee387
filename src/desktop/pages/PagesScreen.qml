import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages
import Tessary.Desk

/// A place's pages as a tree, the open page on its sheet, and the page's cards beside it.
FocusScope {
    id: screen

    required property Desk desk
    required property string place
    property string page
    signal openPage(string id)
    signal review(string id)
    signal told(string sentence)
    signal generate(string id, string selection)

    PageTreeModel {
        id: tree
        desk: screen.desk
        place: screen.place
    }
    // A place opens with its first page.
    readonly property string shownPage: tree.rowOf(page) >= 0 ? page : page === "" ? tree.firstPage : page

    PageModel {
        id: current
        desk: screen.desk
        pageId: screen.shownPage
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        PageTree {
            Layout.preferredWidth: 224
            Layout.fillHeight: true
            tree: tree
            current: screen.shownPage
            onOpen: id => screen.openPage(id)
        }

        Surface {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.topMargin: 8
            Layout.bottomMargin: 8
            Layout.rightMargin: panel.visible ? 0 : 8
            radius: 16
            elevation: 2
            fill: Theme.paper

            PageSheet {
                id: paper
                anchors.fill: parent
                visible: current.exists
                focus: true
                page: current
                onOpen: id => screen.openPage(id)
                onTold: sentence => screen.told(sentence)
                onGenerate: screen.generate(screen.shownPage, selection)
            }
            EmptyState {
                anchors.centerIn: parent
                visible: !current.exists
                text: qsTr("There are no pages here yet.")
                actionText: screen.place === "archive" ? "" : qsTr("Write a page")
                onAction: screen.openPage(tree.addPage(""))
            }
        }

        PageDeck {
            id: panel
            Layout.preferredWidth: 312
            Layout.fillHeight: true
            visible: current.exists && screen.width >= 980
            desk: screen.desk
            page: screen.shownPage
            onReview: screen.review(screen.shownPage)
            onGenerate: screen.generate(screen.shownPage, paper.selection)
            onMakeCards: screen.told(current.makeCardsFromText())
        }
    }
}
