import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Settings

/// Where everything lies, whether it is in order, and the ways in and out.
ColumnLayout {
    id: pane

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
        title: qsTr("Library")
        SettingRow {
            first: true
            title: qsTr("Folder")
            detail: pane.care.folder
            PushButton {
                text: qsTr("Open folder")
                onClicked: Qt.openUrlExternally(pane.care.folderUrl)
            }
        }
        SettingRow {
            title: qsTr("Size")
            detail: pane.care.totalSize === "" ? qsTr("Measuring…") : ""
            GridLayout {
                visible: pane.care.totalSize !== ""
                columns: 2
                columnSpacing: 16
                rowSpacing: 2
                Repeater {
                    model: [...pane.care.sizes, { label: qsTr("In all"), text: pane.care.totalSize }]
                    delegate: RowLayout {
                        id: size
                        required property var modelData
                        Layout.columnSpan: 2
                        Txt {
                            text: size.modelData.label
                            color: Theme.ink2
                            Layout.preferredWidth: 168
                        }
                        Txt {
                            text: size.modelData.text
                            weight: 500
                            Layout.preferredWidth: 168
                        }
                    }
                }
            }
        }
        SettingRow {
            title: qsTr("Check the library")
            detail: qsTr("Reads every file and says what is wrong. Nothing is changed.")
            PushButton {
                text: pane.care.checking ? qsTr("Checking…") : qsTr("Check now")
                enabled: !pane.care.checking
                onClicked: pane.care.check()
            }
        }
        Note {
            text: pane.care.checking ? "" : pane.care.checkResult
            tone: pane.care.checkProblems > 0 ? "warn" : "good"
            Layout.bottomMargin: 10
        }
        LineList {
            lines: pane.care.checking ? [] : pane.care.findings
            Layout.bottomMargin: 10
        }
        Txt {
            visible: pane.care.repairable && !pane.care.checking
            text: qsTr("Close the window and run “tessary-cli verify --repair” to mend what can be mended without loss.")
            color: Theme.ink2
            wrap: true
            Layout.fillWidth: true
            Layout.bottomMargin: 12
        }
    }
    ExchangeStatus { exchange: pane.exchange }
    ExchangeGroup {
        exchange: pane.exchange
        dialogs: pane.dialogs
    }
}
