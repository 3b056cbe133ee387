import QtQuick
import QtQuick.Dialogs
import Tessary.Settings

/// The windows that ask where an export goes and what is imported.
Item {
    id: dialogs

    required property LibraryExchangeModel exchange

    /// "json", "markdown" or "deck".
    function askExport(kind: string) {
        const name = exchange.proposedName(kind);
        save.kind = kind;
        save.title = kind === "json" ? qsTr("Export all pages as JSON")
                   : kind === "markdown" ? qsTr("Export all pages as Markdown") : qsTr("Export all cards");
        save.nameFilters = [kind === "json" ? qsTr("JSON files (*.json)")
                          : kind === "markdown" ? qsTr("Markdown files (*.md)") : qsTr("Text files (*.txt)")];
        save.defaultSuffix = name.split(".").pop();
        save.currentFile = save.currentFolder + "/" + name;
        save.open();
    }
    /// "json", "notes" (a folder) or "deck".
    function askImport(kind: string) {
        if (kind === "notes") {
            folder.open();
            return;
        }
        file.kind = kind;
        file.title = kind === "json" ? qsTr("Choose a Tessary JSON backup to import")
                                     : qsTr("Choose a deck file to import");
        file.nameFilters = [kind === "json" ? qsTr("JSON files (*.json)") : qsTr("Deck files (*.txt *.tsv *.csv)")];
        file.open();
    }

    FileDialog {
        id: save
        property string kind
        acceptLabel: qsTr("Export")
        fileMode: FileDialog.SaveFile
        onAccepted: dialogs.exchange.exportTo(kind, selectedFile)
    }
    FileDialog {
        id: file
        property string kind
        acceptLabel: qsTr("Import")
        onAccepted: dialogs.exchange.importFrom(kind, selectedFile)
    }
    FolderDialog {
        id: folder
        title: qsTr("Choose a folder of notes to import")
        acceptLabel: qsTr("Import")
        onAccepted: dialogs.exchange.importFrom("notes", selectedFolder)
    }
}
