import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// Copies of all pages: made by themselves, made now, and brought back.
ColumnLayout {
    id: pane

    required property Desk desk
    required property LibraryExchangeModel exchange
    required property ExchangeDialogs dialogs
    required property LibraryCareModel care

    spacing: 24
    Component.onCompleted: care.measure()

    Connections {
        target: pane.exchange
        function onFinished() { pane.care.measure() }
    }

    SettingGroup {
        title: qsTr("Backup")
        SettingToggle {
            desk: pane.desk
            key: "autoBackup"
            first: true
            title: qsTr("Auto-backup on quit")
            detail: qsTr("Saves a copy to ~/Documents/Tessary Backups/ when you close the app.")
        }
        SettingRow {
            title: pane.care.lastBackup === "" ? qsTr("No backup was made yet")
                                               : qsTr("Last backup: %1").arg(pane.care.lastBackup)
            detail: pane.care.lastBackup === "" ? pane.care.backupFolder
                  : pane.care.backupFolder + "/" + pane.care.lastBackupFile
            PushButton {
                kind: "primary"
                text: qsTr("Back up now")
                enabled: !pane.exchange.busy
                onClicked: pane.exchange.backUp()
            }
            PushButton {
                text: qsTr("Open folder")
                onClicked: Qt.openUrlExternally(pane.care.backupFolderUrl)
            }
        }
        SettingRow {
            title: qsTr("A backup of your own")
            detail: qsTr("All pages in one file, wherever you want it.")
            PushButton {
                text: qsTr("Save backup…")
                enabled: !pane.exchange.busy
                onClicked: pane.dialogs.askExport("json")
            }
        }
        SettingRow {
            title: qsTr("Bring pages back")
            detail: qsTr("Import notes from a Tessary JSON backup. Duplicate notes (same ID) are skipped.")
            PushButton {
                text: qsTr("Import…")
                enabled: !pane.exchange.busy
                onClicked: pane.dialogs.askImport("json")
            }
        }
    }
    ExchangeStatus { exchange: pane.exchange }
}
