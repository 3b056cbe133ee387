import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// What the provider in use lacks, its key, model and address, and a way to try it.
ColumnLayout {
    id: details

    /// A ProviderCard, which has this inside and so cannot be named.
    required property var card

    spacing: 12

    Note {
        text: details.card.readiness === "missing" ? details.card.problem : ""
        tone: "warn"
    }
    Repeater {
        model: details.card.notes
        delegate: Txt {
            required property string modelData
            text: modelData
            color: Theme.ink2
            wrap: true
            Layout.fillWidth: true
        }
    }
    ColumnLayout {
        visible: details.card.steps.length > 0 && !details.card.hasKey
        spacing: 2
        Repeater {
            model: details.card.steps
            delegate: Txt {
                required property string modelData
                text: modelData
                wrap: true
                Layout.fillWidth: true
            }
        }
    }
    KeyRow {
        visible: details.card.needsKey
        card: details.card
    }
    Txt {
        visible: text !== ""
        text: details.card.privacy
        size: 12
        color: Theme.ink3
        wrap: true
        Layout.fillWidth: true
    }
    ColumnLayout {
        visible: details.card.modelKey !== "" || details.card.addressKey !== ""
        spacing: 0
        SettingText {
            visible: key !== ""
            desk: details.card.desk
            key: details.card.modelKey
            title: qsTr("Model")
            emptyText: qsTr("Its own choice")
        }
        SettingText {
            visible: key !== ""
            desk: details.card.desk
            key: details.card.addressKey
            title: qsTr("Address")
            detail: details.card.kind === "ollama" ? "" : qsTr("Only for a server of your own that speaks like it.")
            emptyText: qsTr("Its own server")
        }
        SettingRow {
            title: qsTr("Try it")
            detail: qsTr("Sends one small question and waits for the answer.")
            PushButton {
                text: details.card.trial === "running" ? qsTr("Asking…") : qsTr("Test the connection")
                enabled: details.card.trial !== "running" && details.card.readiness !== "noKey"
                onClicked: details.card.engine.tryOut(details.card.kind)
            }
        }
        Note {
            text: details.card.trialNote
            tone: details.card.trial === "bad" ? "bad" : "good"
        }
    }
}
