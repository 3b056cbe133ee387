import QtQuick
import QtQuick.Controls.Basic
import Tessary.Kit
import Tessary.Desk
import Tessary.Shelf

/// The notebooks, standing on boards, and what is due.
Screen {
    id: screen

    property Desk desk
    /// Nothing was ever made here.
    property bool untouched: false
    signal openNotebook(string id)
    signal startReview()
    signal welcomeAsked()

    title: qsTr("All Notes")
    subtitle: grid.count > 0 ? shelf.summary : ""

    function newNotebook() { notebookSheet.edit(""); }
    function open(id: string) {
        shelf.noteOpened(id);
        screen.openNotebook(id);
    }

    PushButton {
        visible: grid.count > 0
        text: qsTr("New notebook")
        iconName: "plus"
        keyText: screen.width > 760 ? "Ctrl N" : ""
        onClicked: screen.newNotebook()
    }

    content: [
        ShelfModel {
            id: shelf
            desk: screen.desk
        },
        // Cards fall due while nothing changes.
        Timer {
            interval: 60000
            repeat: true
            running: screen.visible
            onTriggered: shelf.refresh()
        },
        ShelfGrid {
            id: grid
            anchors.fill: parent
            anchors.leftMargin: -16
            anchors.rightMargin: -28
            anchors.bottomMargin: -24
            focus: true
            shelf: shelf
            onOpened: id => screen.open(id)
            onStartReview: screen.startReview()
            onRestyleAsked: id => notebookSheet.edit(id)
            onDeletionAsked: (id, name, pages, pagesText) => deleteSheet.ask(id, name, pages, pagesText)
        },
        EmptyState {
            anchors.centerIn: parent
            visible: grid.count === 0
            text: qsTr("Your shelf is empty. A notebook holds the pages and cards of one subject.")
            actionText: qsTr("New notebook")
            onAction: screen.newNotebook()
            otherText: screen.untouched ? qsTr("Look around in a welcome notebook") : ""
            onOtherAction: screen.welcomeAsked()
        }
    ]

    NotebookSheet {
        id: notebookSheet
        shelf: shelf
        onMade: id => grid.showNotebook(id)
    }
    DeleteNotebookSheet {
        id: deleteSheet
        shelf: shelf
    }
}
