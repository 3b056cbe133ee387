import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// How many cards come, how they are asked, and what cards the AI writes.
ColumnLayout {
    id: pane

    required property Desk desk
    signal openEngine()

    spacing: 24

    SettingGroup {
        title: qsTr("Every day")
        SettingNumber {
            desk: pane.desk
            key: "flashcards.newPerDay"
            first: true
            title: qsTr("New cards")
            detail: qsTr("Offered in one day at most. Each new card asks for several reviews in the weeks after.")
        }
        SettingNumber {
            desk: pane.desk
            key: "flashcards.maxReviews"
            title: qsTr("Reviews")
            detail: qsTr("Offered in one day at most; what is left over waits for the next day.")
        }
        RetentionRow { desk: pane.desk }
    }
    SettingGroup {
        title: qsTr("Reviews")
        SettingToggle {
            desk: pane.desk
            key: "flashcards.shuffle"
            first: true
            title: qsTr("Mix the cards")
            detail: qsTr("Else they come in the order in which they fell due.")
        }
        SettingToggle {
            desk: pane.desk
            key: "flashcards.typeAnswers"
            title: qsTr("Type the answers")
        }
        SettingToggle {
            desk: pane.desk
            key: "flashcards.aiGrading"
            title: qsTr("Type the answer, the AI checks it")
            detail: qsTr("Else the program compares it with the card's answer.")
        }
        SettingToggle {
            desk: pane.desk
            key: "flashcards.showIntervals"
            title: qsTr("Show when the card comes back")
            detail: qsTr("On the rating buttons.")
        }
        SettingNumber {
            desk: pane.desk
            key: "flashcards.leechLapses"
            title: qsTr("Leeches")
            detail: qsTr("A card forgotten this often is a leech: it wants to be written anew. 0 switches the rule off.")
        }
        SettingToggle {
            desk: pane.desk
            key: "flashcards.suspendLeeches"
            title: qsTr("Take leeches out of reviews")
        }
    }
    SettingGroup {
        title: qsTr("Cards that the AI writes")
        SettingRow {
            first: true
            title: qsTr("AI engine")
            detail: engine.chosenLabel
            AIEngineModel {
                id: engine
                desk: pane.desk
            }
            PushButton {
                text: qsTr("Engine and keys…")
                onClicked: pane.openEngine()
            }
        }
        KindsRow {
            desk: pane.desk
            title: qsTr("Kinds")
        }
        SettingChoice {
            desk: pane.desk
            key: "flashcards.difficulty"
            title: qsTr("Difficulty")
            values: ["basic", "standard", "advanced"]
            names: [qsTr("Basic"), qsTr("Standard"), qsTr("Advanced")]
        }
        SettingNumber {
            desk: pane.desk
            key: "flashcards.cardsPerPage"
            title: qsTr("Cards for each page of a source")
            detail: qsTr("When no count is given; 0.1 to 20.")
        }
        SettingNumber {
            desk: pane.desk
            key: "flashcards.maxCards"
            title: qsTr("Cards in one run")
            detail: qsTr("At most, when no count is given.")
        }
        SettingChoice {
            desk: pane.desk
            key: "flashcards.language"
            title: qsTr("Language")
            values: ["", "system", "en", "es", "fr", "de", "it", "pt"]
            names: [qsTr("As in General"), qsTr("That of the source"), "English", "Español", "Français", "Deutsch",
                    "Italiano", "Português"]
        }
        SettingToggle {
            desk: pane.desk
            key: "flashcards.makeSummary"
            title: qsTr("Also write a summary page")
        }
    }
}
