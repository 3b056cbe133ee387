import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Settings

/// The exports and the imports, each with the window that asks for its file.
ColumnLayout {
    id: pane

    required property LibraryExchangeModel exchange

    spacing: 24
    Layout.fillWidth: true

    function askExport(kind: string, filter: string) {
        save.kind = kind;
        save.nameFilters = [filter];
        save.defaultSuffix = exchange.proposedName(kind).split(".").pop();
        save.currentFile = save.currentFolder + "/" + exchange.proposedName(kind);
        save.open();
    }
    function askImport(kind: string, title: string, filter: string) {
        open.kind = kind;
        open.title = title;
        open.nameFilters = [filter];
        open.open();
    }

    SettingGroup {
        title: qsTr("Export")
        SettingRow {
            first: true
            title: qsTr("All pages as a JSON backup")
            detail: qsTr("Everything a page holds, to be imported again.")
            PushButton {
                text: qsTr("Export JSON…")
                enabled: !pane.exchange.busy
                onClicked: pane.askExport("json", qsTr("JSON files (*.json)"))
            }
        }
        SettingRow {
            title: qsTr("All pages as one Markdown document")
            detail: qsTr("Titles, tags and text, for other programs and for paper.")
            PushButton {
                text: qsTr("Export Markdown…")
                enabled: !pane.exchange.busy
                onClicked: pane.askExport("markdown", qsTr("Markdown files (*.md)"))
            }
        }
        SettingRow {
            title: qsTr("All cards as a deck file")
            detail: qsTr("Questions and answers, without their history.")
            PushButton {
                text: qsTr("Export cards…")
                enabled: !pane.exchange.busy
                onClicked: pane.askExport("deck", qsTr("Text files (*.txt)"))
            }
        }
    }
    SettingGroup {
        title: qsTr("Import")
        SettingRow {
            first: true
            title: qsTr("A folder of notes")
            detail: qsTr("Markdown and text files with their pictures. The folder becomes a notebook; what is there "
                       + "already is not added again.")
            PushButton {
                text: qsTr("Import notes…")
                enabled: !pane.exchange.busy
                onClicked: folder.open()
            }
        }
        SettingRow {
            title: qsTr("A backup")
            detail: qsTr("Import notes from a Tessary JSON backup. Duplicate notes (same ID) are skipped.")
            PushButton {
                text: qsTr("Import backup…")
                enabled: !pane.exchange.busy
                onClicked: pane.askImport("json", qsTr("Choose a Tessary JSON backup to import"),
                                          qsTr("JSON files (*.json)"))
            }
        }
        SettingRow {
            title: qsTr("A deck file")
            detail: qsTr("Its cards come to stand on a new page of that name.")
            PushButton {
                text: qsTr("Import cards…")
                enabled: !pane.exchange.busy
                onClicked: pane.askImport("deck", qsTr("Choose a deck file to import"),
                                          qsTr("Deck files (*.txt *.tsv *.csv)"))
            }
        }
    }

    FileDialog {
        id: save
        property string kind
        title: qsTr("Export")
        acceptLabel: qsTr("Export")
        fileMode: FileDialog.SaveFile
        onAccepted: pane.exchange.exportTo(kind, selectedFile)
    }
    FileDialog {
        id: open
        property string kind
        acceptLabel: qsTr("Import")
        onAccepted: pane.exchange.importFrom(kind, selectedFile)
    }
    FolderDialog {
        id: folder
        title: qsTr("Choose a folder of notes to import")
        acceptLabel: qsTr("Import")
        onAccepted: pane.exchange.importFrom("notes", selectedFolder)
    }
}
