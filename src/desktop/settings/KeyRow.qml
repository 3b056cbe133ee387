import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Settings

/// An API key: written in, replaced or taken out; never shown.
ColumnLayout {
    id: row

    /// A ProviderCard, which has this inside and so cannot be named.
    required property var card
    property bool replacing: false

    readonly property bool writing: !card.hasKey || replacing

    function save() { row.card.engine.saveKey(row.card.kind, field.text) }

    spacing: 8
    Layout.fillWidth: true

    Connections {
        target: row.card.engine
        function onKeySaved(kind) {
            if (kind !== row.card.kind)
                return;
            field.clear();
            row.replacing = false;
        }
    }

    RowLayout {
        visible: !row.writing
        spacing: 8
        Icon { name: "key" }
        Txt {
            text: qsTr("Stored in your keychain, never shown again")
            weight: 500
            wrap: true
            Layout.fillWidth: true
        }
        PushButton {
            text: qsTr("Replace…")
            enabled: !row.card.saving
            onClicked: {
                row.replacing = true;
                field.forceActiveFocus();
            }
        }
        PushButton {
            kind: "ghost"
            text: qsTr("Remove key")
            enabled: !row.card.saving
            onClicked: row.card.engine.removeKey(row.card.kind)
        }
    }
    RowLayout {
        visible: row.writing
        spacing: 8
        Field {
            id: field
            Layout.fillWidth: true
            echoMode: TextInput.Password
            placeholderText: qsTr("%1 API key").arg(row.card.label)
            invalid: row.card.keyFailed
            enabled: !row.card.saving
            onAccepted: row.save()
            Keys.onEscapePressed: {
                field.clear();
                row.replacing = false;
            }
        }
        PushButton {
            kind: "primary"
            text: row.card.saving ? qsTr("Saving…") : qsTr("Save key")
            enabled: field.text !== "" && !row.card.saving
            onClicked: row.save()
        }
        PushButton {
            visible: row.replacing
            kind: "ghost"
            text: qsTr("Keep the old one")
            onClicked: {
                field.clear();
                row.replacing = false;
            }
        }
    }
    Note {
        text: row.card.keyNote
        tone: row.card.keyFailed ? "bad" : "good"
    }
}
