import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Settings

/// What this is, whose work it stands on, and which keys do what.
ColumnLayout {
    id: pane

    /// Each has a title and a keyText.
    property var commands: []

    spacing: 24

    RowLayout {
        spacing: 16
        Plim { size: 64 }
        ColumnLayout {
            spacing: 2
            Txt {
                text: "Tessary"
                size: 24
                weight: 700
            }
            Txt {
                text: Qt.application.version === "" ? qsTr("A study notebook")
                                                    : qsTr("A study notebook. Version %1").arg(Qt.application.version)
                color: Theme.ink2
                Layout.fillWidth: true
            }
            Txt {
                text: qsTr("Free software under the GNU General Public License, version 3.")
                color: Theme.ink2
                wrap: true
                Layout.fillWidth: true
            }
        }
    }
    SettingGroup {
        title: qsTr("Keys")
        Repeater {
            model: Array.from(pane.commands).filter(command => command.keyText !== "")
            delegate: SettingRow {
                id: row
                required property int index
                required property var modelData
                first: index === 0
                title: modelData.title
                Kbd { text: row.modelData.keyText }
            }
        }
    }
    SettingGroup {
        title: qsTr("Keys in a review")
        Repeater {
            model: [
                { keys: qsTr("Space"), does: qsTr("Show the answer; rate as suggested") },
                { keys: "1 – 4", does: qsTr("Rate: again, hard, good, easy") },
                { keys: "Ctrl Z", does: qsTr("Take back the last rating") }
            ]
            delegate: SettingRow {
                id: reviewRow
                required property int index
                required property var modelData
                first: index === 0
                title: modelData.does
                Kbd { text: reviewRow.modelData.keys }
            }
        }
    }
    SettingGroup {
        title: qsTr("Made with")
        Repeater {
            model: [
                { name: "Qt", licence: "GNU LGPL 3" },
                { name: "Poppler", licence: "GNU GPL 2 or 3" },
                { name: "ICU", licence: "Unicode License" },
                { name: "libcurl", licence: "curl License" },
                { name: "libsecret", licence: "GNU LGPL 2.1" },
                { name: "simdjson", licence: "Apache License 2.0" },
                { name: "yaml-cpp", licence: "MIT License" },
                { name: "{fmt}", licence: "MIT License" },
                { name: qsTr("Inter, the typeface"), licence: "SIL Open Font License 1.1" }
            ]
            delegate: SettingRow {
                id: part
                required property int index
                required property var modelData
                first: index === 0
                title: modelData.name
                Txt {
                    text: part.modelData.licence
                    color: Theme.ink2
                }
            }
        }
    }
}
