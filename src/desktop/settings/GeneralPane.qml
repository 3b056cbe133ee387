import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// How the window looks and moves, and which language is written.
ColumnLayout {
    id: pane

    required property Desk desk

    spacing: 24

    SettingGroup {
        title: qsTr("Window")
        SettingChoice {
            desk: pane.desk
            key: "tessary.theme"
            first: true
            title: qsTr("Theme")
            values: ["system", "light", "dark"]
            names: [qsTr("As the system"), qsTr("Light"), qsTr("Dark")]
        }
        SettingToggle {
            desk: pane.desk
            key: "tessary.reduceMotion"
            title: qsTr("Reduce motion")
            detail: qsTr("Cards and panels change without moving.")
        }
        SettingToggle {
            desk: pane.desk
            key: "tessary.companion"
            title: qsTr("Plim, the companion")
            detail: qsTr("Sits in the sidebar and keeps you company in reviews.")
        }
    }
    SettingGroup {
        title: qsTr("Language")
        SettingChoice {
            desk: pane.desk
            key: "tessary.appLanguage"
            first: true
            title: qsTr("Language of what the AI writes")
            detail: qsTr("For cards, summaries and the check of answers.")
            values: ["system", "en", "es", "fr", "de", "it", "pt"]
            names: [qsTr("That of the source"), "English", "Español", "Français", "Deutsch", "Italiano", "Português"]
        }
    }
    SettingGroup {
        title: qsTr("Page lists")
        SettingChoice {
            desk: pane.desk
            key: "entrySortMode"
            first: true
            title: qsTr("Sorted by")
            values: ["created", "edited", "title"]
            names: [qsTr("Created"), qsTr("Edited"), qsTr("Title")]
        }
        SettingChoice {
            desk: pane.desk
            key: "sortOrder"
            title: qsTr("Order")
            values: ["newest", "oldest"]
            names: [qsTr("Newest first"), qsTr("Oldest first")]
        }
    }
}
