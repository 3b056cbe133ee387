import QtQuick
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// Which kinds of cards the AI writes.
SettingRow {
    id: row

    required property Desk desk

    problem: setting.problem

    Setting {
        id: setting
        desk: row.desk
        key: "flashcards.kinds"
    }
    Repeater {
        model: [{ word: "basic", name: qsTr("Question") }, { word: "cloze", name: qsTr("Cloze") },
                { word: "multipleChoice", name: qsTr("Choice") }]
        delegate: Chip {
            id: chip
            required property var modelData
            text: modelData.name
            checkable: true
            // The setting decides, also against the press that has just turned it.
            function follow() { checked = setting.has(modelData.word) }
            Component.onCompleted: follow()
            onClicked: {
                setting.setHas(modelData.word, checked);
                follow();
            }
            Connections {
                target: setting
                function onChanged() { chip.follow() }
            }
        }
    }
}
