import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Study

/// Writes a card of any kind: a new one, or one that is there.
Sheet {
    id: sheet

    required property DeckEditor editor
    property string card
    property string pageId
    property var options: []
    property int optionCount: 0
    property int correct: -1

    readonly property var kinds: ["basic", "cloze", "multipleChoice"]
    readonly property string kind: kinds[choice.currentIndex]
    readonly property bool isNew: card === ""
    readonly property int mostOptions: 8
    readonly property var draft: ({
        card: sheet.card,
        pageId: sheet.pageId,
        kind: sheet.kind,
        front: front.text,
        back: back.text,
        options: sheet.options,
        correctIndex: sheet.correct,
        explanation: explanation.text
    })
    readonly property string problem: opened ? editor.problemOf(draft) : ""

    function openFor(id: string) {
        sheet.fill(editor.draft(id));
    }
    function fill(draft: var) {
        sheet.card = draft.card;
        sheet.pageId = draft.pageId;
        choice.currentIndex = Math.max(0, sheet.kinds.indexOf(draft.kind));
        sheet.setOptions(draft.options.length > 0 ? draft.options : ["", "", "", ""], draft.correctIndex);
        front.text = draft.front;
        back.text = draft.back;
        explanation.text = draft.explanation;
        place.model = sheet.isNew ? editor.pages() : [];
        place.currentIndex = 0;
        sheet.open();
        front.editor.forceActiveFocus();
    }
    /// All at once: a field that is still there is told its text by its place.
    function setOptions(options: var, correct: int) {
        sheet.optionCount = 0;
        sheet.options = options;
        sheet.correct = correct;
        sheet.optionCount = options.length;
    }
    function setOption(at: int, text: string) { sheet.options = sheet.options.map((old, i) => i === at ? text : old); }
    function removeOption(at: int) {
        const correct = sheet.correct === at ? -1 : sheet.correct > at ? sheet.correct - 1 : sheet.correct;
        sheet.setOptions(sheet.options.filter((_, i) => i !== at), correct);
    }

    sheetWidth: 560
    title: isNew ? qsTr("New card") : qsTr("Edit card")
    acceptText: isNew ? qsTr("Add card") : qsTr("Save")
    acceptEnabled: problem === ""
    note: front.text === "" ? "" : problem
    onAccepted: editor.save(draft)

    component Label: Txt {
        size: 12
        weight: 600
        color: Theme.ink3
        Layout.bottomMargin: -8
    }
    Label {
        visible: sheet.isNew
        text: qsTr("Page")
    }
    Dropdown {
        id: place
        visible: sheet.isNew
        textRole: "title"
        valueRole: "pageId"
        Accessible.name: qsTr("Page")
        Layout.fillWidth: true
        onActivated: sheet.pageId = currentValue
    }
    Choice {
        id: choice
        model: [qsTr("Basic"), qsTr("Cloze"), qsTr("Multiple choice")]
        Accessible.name: qsTr("Kind of card")
        Layout.fillWidth: true
    }
    Label {
        text: sheet.kind === "cloze" ? qsTr("Sentence, with {{double braces}} around what is asked") : qsTr("Front")
    }
    TextBox {
        id: front
        placeholderText: sheet.kind === "cloze" ? qsTr("The {{heart}} pumps the blood.") : qsTr("What is asked")
        editor.Accessible.name: qsTr("Front")
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
        editor.Accessible.name: qsTr("Back")
        Layout.fillWidth: true
        Layout.preferredHeight: 80
    }
    Label {
        visible: sheet.kind === "multipleChoice"
        text: qsTr("Options, the right one ticked")
    }
    Repeater {
        model: sheet.kind === "multipleChoice" ? sheet.optionCount : 0
        delegate: OptionRow {
            required property int index
            number: index + 1
            text: sheet.options[index]
            isRight: sheet.correct === index
            removable: sheet.optionCount > 2
            Layout.fillWidth: true
            onEdited: text => sheet.setOption(index, text)
            onTicked: sheet.correct = index
            onRemoved: sheet.removeOption(index)
        }
    }
    PushButton {
        visible: sheet.kind === "multipleChoice" && sheet.optionCount < sheet.mostOptions
        kind: "ghost"
        controlSize: 28
        iconName: "plus"
        text: qsTr("Another option")
        onClicked: sheet.setOptions(sheet.options.concat([""]), sheet.correct)
    }
    Label { text: qsTr("Explanation") }
    TextBox {
        id: explanation
        placeholderText: qsTr("Shown with the answer, if you like")
        editor.Accessible.name: qsTr("Explanation")
        Layout.fillWidth: true
        Layout.preferredHeight: 64
    }
}
