import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Generation

/// What is to be written: of what, which kinds, how many, how hard, and by whom.
ColumnLayout {
    id: form

    required property GenerationChoices choices
    signal openSettings()

    spacing: 16

    GenerationFormRow {
        label: qsTr("Source")
        SourceChips {
            choices: form.choices
            Layout.fillWidth: true
        }
    }
    Divider { Layout.fillWidth: true }
    GenerationFormRow {
        label: qsTr("Make")
        RowLayout {
            spacing: 8
            KindTile {
                text: qsTr("Flashcards")
                iconName: "study"
                checked: form.choices.basic
                onToggled: form.choices.basic = checked
                Layout.preferredWidth: 1
                Layout.fillWidth: true
            }
            KindTile {
                text: qsTr("Cloze")
                iconName: "cloze"
                checked: form.choices.cloze
                onToggled: form.choices.cloze = checked
                Layout.preferredWidth: 1
                Layout.fillWidth: true
            }
            KindTile {
                text: qsTr("Multiple choice")
                iconName: "list"
                checked: form.choices.multipleChoice
                onToggled: form.choices.multipleChoice = checked
                Layout.preferredWidth: 1
                Layout.fillWidth: true
            }
            KindTile {
                text: qsTr("Summary page")
                iconName: "summary"
                checked: form.choices.summary
                onToggled: form.choices.summary = checked
                Layout.preferredWidth: 1
                Layout.fillWidth: true
            }
        }
    }
    GenerationFormRow {
        label: qsTr("Amount")
        RowLayout {
            spacing: 12
            Choice {
                model: [qsTr("Few"), qsTr("Usual"), qsTr("Many"), qsTr("Number")]
                currentIndex: form.choices.amount
                Accessible.name: qsTr("Amount")
                onActivated: index => form.choices.amount = index
            }
            Txt {
                text: form.choices.amountText
                weight: 600
                horizontalAlignment: Text.AlignRight
                Layout.fillWidth: true
            }
        }
        Fader {
            visible: form.choices.amount === GenerationChoices.ByNumber
            from: 1
            to: form.choices.mostCards
            stepSize: 1
            snapMode: T.Slider.SnapAlways
            value: form.choices.number
            Accessible.name: qsTr("Number of cards")
            onMoved: form.choices.number = Math.round(value)
            Layout.fillWidth: true
        }
    }
    GenerationFormRow {
        label: qsTr("Difficulty")
        Choice {
            model: [qsTr("Basic"), qsTr("Standard"), qsTr("Advanced")]
            currentIndex: form.choices.difficulty
            Accessible.name: qsTr("Difficulty")
            onActivated: index => form.choices.difficulty = index
            Layout.preferredWidth: 396
        }
    }
    GenerationFormRow {
        label: qsTr("Focus")
        hint: qsTr("Optional")
        TextBox {
            id: focusBox
            text: form.choices.focus
            placeholderText: qsTr("What you want to learn most")
            editor.onTextChanged: form.choices.focus = text
            Layout.fillWidth: true
            Layout.preferredHeight: 64
        }
    }
    Divider { Layout.fillWidth: true }
    GenerationFormRow {
        label: qsTr("Provider")
        lineHeight: 60
        ProviderButton {
            choices: form.choices
            Layout.fillWidth: true
        }
        RowLayout {
            visible: note.text !== "" && form.choices.readiness !== GenerationChoices.Unready
            spacing: 8
            Icon {
                name: form.choices.staysHere ? "check" : "info"
                size: 16
                color: form.choices.staysHere ? Theme.good : Theme.ink3
                Layout.alignment: Qt.AlignTop
            }
            Txt {
                id: note
                text: form.choices.providerNote
                size: 12
                color: Theme.ink2
                wrap: true
                Layout.fillWidth: true
            }
        }
        ProviderTrouble {
            choices: form.choices
            visible: form.choices.readiness === GenerationChoices.Unready
            onOpenSettings: form.openSettings()
            Layout.fillWidth: true
        }
    }
}
