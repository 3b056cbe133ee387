import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Settings

/// The exports and the imports.
ColumnLayout {
    id: pane

    required property LibraryExchangeModel exchange
    required property ExchangeDialogs dialogs

    spacing: 24
    Layout.fillWidth: true

    SettingGroup {
        title: qsTr("Export")
        SettingRow {
            first: true
            title: qsTr("All pages as a JSON backup")
            detail: qsTr("Everything a page holds, to be imported again.")
            PushButton {
                text: qsTr("Export JSON…")
                enabled: !pane.exchange.busy
                onClicked: pane.dialogs.askExport("json")
            }
        }
        SettingRow {
            title: qsTr("All pages as one Markdown document")
            detail: qsTr("Titles, tags and text, for other programs and for paper.")
            PushButton {
                text: qsTr("Export Markdown…")
                enabled: !pane.exchange.busy
                onClicked: pane.dialogs.askExport("markdown")
            }
        }
        SettingRow {
            title: qsTr("All cards as a deck file")
            detail: qsTr("Questions and answers, without their history.")
            PushButton {
                text: qsTr("Export cards…")
                enabled: !pane.exchange.busy
                onClicked: pane.dialogs.askExport("deck")
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
                onClicked: pane.dialogs.askImport("notes")
            }
        }
        SettingRow {
            title: qsTr("A backup")
            detail: qsTr("Import notes from a Tessary JSON backup. Duplicate notes (same ID) are skipped.")
            PushButton {
                text: qsTr("Import backup…")
                enabled: !pane.exchange.busy
                onClicked: pane.dialogs.askImport("json")
            }
        }
        SettingRow {
            title: qsTr("A deck file")
            detail: qsTr("Its cards come to stand on a new page of that name.")
            PushButton {
                text: qsTr("Import cards…")
                enabled: !pane.exchange.busy
                onClicked: pane.dialogs.askImport("deck")
            }
        }
    }
}
