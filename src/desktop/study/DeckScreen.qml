import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Desk
import Tessary.Study

/// The cards of a notebook, or all: looked through, written, mended, brought in and given out.
FocusScope {
    id: screen

    required property Desk desk
    /// "all", "loose", or a notebook's identity.
    property string place: "all"
    signal review(string place)
    signal openStudy()
    signal openPage(string place, string page)

    readonly property bool hasCards: deck.ready && deck.total > 0

    function offerUndo(sentence: string) { toasts.show(sentence, qsTr("Undo"), () => deck.undo()); }
    function tell(sentence: string) { toasts.show(sentence, "", null); }

    DeckModel {
        id: deck
        desk: screen.desk
        place: screen.place
        onDone: sentence => screen.offerUndo(sentence)
    }
    DeckEditor {
        id: editor
        deck: deck
        onTold: sentence => screen.tell(sentence)
    }

    Shortcut {
        sequence: "Ctrl+F"
        onActivated: filters.searchField.forceActiveFocus(Qt.ShortcutFocusReason)
    }
    Shortcut {
        sequence: "Ctrl+N"
        onActivated: form.openFor("")
    }

    ColumnLayout {
        anchors { fill: parent; margins: 32; topMargin: 16; bottomMargin: 8; rightMargin: 24 }
        spacing: 16

        DeckTitle {
            deck: deck
            Layout.fillWidth: true
            Layout.rightMargin: 8
            onBack: screen.openStudy()
            onAdd: form.openFor("")
            onReview: screen.review(screen.place)
            onImportAsked: intake.ask()
            onExportAsked: target.open()
        }
        DeckFilters {
            id: filters
            visible: screen.hasCards && deck.selected === 0
            deck: deck
            Layout.fillWidth: true
            Layout.rightMargin: 8
        }
        DeckBulkBar {
            visible: deck.selected > 0
            deck: deck
            Layout.fillWidth: true
            Layout.rightMargin: 8
            Layout.preferredHeight: filters.implicitHeight
            Layout.maximumHeight: filters.implicitHeight
            onExportAsked: target.open()
        }
        DeckList {
            id: list
            visible: screen.hasCards && deck.count > 0
            deck: deck
            Layout.fillWidth: true
            Layout.fillHeight: true
            onEdit: card => form.openFor(card)
            onOpenPage: page => screen.openPage(screen.place, page)
        }
        Item {
            visible: !list.visible
            Layout.fillWidth: true
            Layout.fillHeight: true
            EmptyState {
                anchors.centerIn: parent
                visible: deck.ready && deck.total === 0
                text: qsTr("This deck has no cards yet. Write one, or bring a deck file in.")
                actionText: qsTr("Add a card")
                onAction: form.openFor("")
            }
            EmptyState {
                anchors.centerIn: parent
                visible: screen.hasCards && deck.count === 0
                text: qsTr("No card is like that.")
                actionText: qsTr("Show all cards")
                onAction: filters.showAll()
            }
        }
    }

    CardForm {
        id: form
        editor: editor
        onClosed: if (list.visible) list.view.forceActiveFocus()
    }
    ImportSheet {
        id: intake
        editor: editor
        onChosen: page => source.open()
    }
    FileDialog {
        id: source
        title: qsTr("Import cards")
        nameFilters: [qsTr("Deck files (*.txt *.tsv *.csv)"), qsTr("All files (*)")]
        onAccepted: editor.importFrom(selectedFile, intake.pageId)
    }
    FileDialog {
        id: target
        title: qsTr("Export cards")
        fileMode: FileDialog.SaveFile
        defaultSuffix: "txt"
        nameFilters: [qsTr("Deck files (*.txt)")]
        onAccepted: editor.exportTo(selectedFile)
    }
    ToastHost {
        id: toasts
        anchors.fill: parent
    }
}
