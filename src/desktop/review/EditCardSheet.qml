import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// Changes the card at hand.
Sheet {
    id: sheet

    required property ReviewModel review
    property string kind
    property var options: []
    property int correct: -1
    property int optionCount: 0

    readonly property var draft: ({
        front: front.text,
        back: back.text,
        options: sheet.options,
        correctIndex: sheet.correct,
        explanation: explanation.text
    })
    readonly property string problem: opened ? review.problemOf(draft) : ""

    function openFor(card: var) {
        sheet.kind = card.kind;
        sheet.optionCount = 0;
        sheet.options = card.options;
        sheet.optionCount = card.options.length;
        sheet.correct = card.correctIndex;
        front.text = card.front;
        back.text = card.back;
        explanation.text = card.explanation;
        sheet.open();
        front.editor.forceActiveFocus();
    }
    function setOption(at: int, text: string) { sheet.options = sheet.options.map((old, i) => i === at ? text : old); }

    sheetWidth: 560
    title: qsTr("Edit card")
    subtitle: kind === "cloze" ? qsTr("Double braces around a term make a blank of it.") : ""
    acceptText: qsTr("Save")
    acceptEnabled: problem === ""
    note: problem
    onAccepted: review.edit(draft)

    component Label: Txt {
        size: 12
        weight: 600
        color: Theme.ink3
        Layout.bottomMargin: -8
    }
    Label { text: sheet.kind === "cloze" ? qsTr("Sentence") : qsTr("Front") }
    TextBox {
        id: front
        placeholderText: qsTr("What is asked")
        Layout.fillWidth: true
        Layout.preferredHeight: 80
    }
    Label {
        visible: back.visible
        text: qsTr("Back")
    }
    TextBox {
        id: back
        visible: sheet.kind === "basic"
        placeholderText: qsTr("The answer")
        Layout.fillWidth: true
        Layout.preferredHeight: 80
    }
    Label {
        visible: sheet.optionCount > 0
        text: qsTr("Options, the right one ticked")
    }
    Repeater {
        model: sheet.optionCount
        delegate: RowLayout {
            id: row
            required property int index
            spacing: 8
            Field {
                text: sheet.options[row.index]
                placeholderText: qsTr("Option %1").arg(row.index + 1)
                onTextEdited: sheet.setOption(row.index, text)
                Layout.fillWidth: true
            }
            IconButton {
                iconName: "check"
                label: qsTr("The right option")
                controlSize: 36
                tint: sheet.correct === row.index ? Theme.good : Theme.edge
                Accessible.role: Accessible.RadioButton
                Accessible.checkable: true
                Accessible.checked: sheet.correct === row.index
                onClicked: sheet.correct = row.index
            }
        }
    }
    Label { text: qsTr("Explanation") }
    TextBox {
        id: explanation
        placeholderText: qsTr("Shown with the answer")
        Layout.fillWidth: true
        Layout.preferredHeight: 64
    }
}
