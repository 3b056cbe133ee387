import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Generation

/// Changes a new card where it stands. Control and Return save, Escape leaves it as it was.
ColumnLayout {
    id: editor

    required property GenerationModel generation
    required property int row
    signal closed()

    property string kind
    property var options: []
    property int optionCount: 0
    property int correct: -1
    readonly property var draft: ({
        front: front.text,
        back: back.text,
        options: editor.options,
        correctIndex: editor.correct,
        explanation: explanation.text
    })
    readonly property string problem: generation.problemOf(row, draft)

    function setOption(at: int, text: string) {
        editor.options = editor.options.map((old, i) => i === at ? text : old);
    }
    function save() {
        if (editor.problem !== "")
            return;
        editor.generation.edit(editor.row, editor.draft);
        editor.closed();
    }

    spacing: 8
    Keys.onEscapePressed: editor.closed()
    Keys.onPressed: event => {
        if (!(event.modifiers & Qt.ControlModifier) || (event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter))
            return;
        editor.save();
        event.accepted = true;
    }
    Component.onCompleted: {
        const card = generation.draft(row);
        kind = card.kind;
        options = card.options;
        optionCount = card.options.length;
        correct = card.correctIndex;
        front.text = card.front;
        back.text = card.back;
        explanation.text = card.explanation;
        front.editor.forceActiveFocus();
    }

    TextBox {
        id: front
        placeholderText: editor.kind === "cloze" ? qsTr("A sentence with {{double braces}} around a term")
                                                 : qsTr("What is asked")
        Layout.fillWidth: true
        Layout.preferredHeight: 64
    }
    TextBox {
        id: back
        visible: editor.kind === "basic"
        placeholderText: qsTr("The answer")
        Layout.fillWidth: true
        Layout.preferredHeight: 64
    }
    Repeater {
        model: editor.optionCount
        delegate: RowLayout {
            id: option
            required property int index
            spacing: 8
            Field {
                text: editor.options[option.index]
                placeholderText: qsTr("Option %1").arg(option.index + 1)
                onTextEdited: editor.setOption(option.index, text)
                Layout.fillWidth: true
            }
            IconButton {
                iconName: "check"
                label: qsTr("The right option")
                controlSize: 36
                tint: editor.correct === option.index ? Theme.good : Theme.edge
                Accessible.role: Accessible.RadioButton
                Accessible.checkable: true
                Accessible.checked: editor.correct === option.index
                onClicked: editor.correct = option.index
            }
        }
    }
    TextBox {
        id: explanation
        placeholderText: qsTr("Explanation, shown with the answer")
        Layout.fillWidth: true
        Layout.preferredHeight: 44
    }
    RowLayout {
        spacing: 8
        Txt {
            text: editor.problem
            size: 12
            color: Theme.bad
            Layout.fillWidth: true
        }
        PushButton {
            kind: "ghost"
            controlSize: 28
            text: qsTr("Cancel")
            Accessible.name: qsTr("Leave the card as it was")
            onClicked: editor.closed()
        }
        PushButton {
            kind: "soft"
            controlSize: 28
            enabled: editor.problem === ""
            text: qsTr("Save")
            onClicked: editor.save()
        }
    }
}
