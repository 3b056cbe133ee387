import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Generation

/// What of the page is read.
ColumnLayout {
    id: chips

    required property GenerationChoices choices

    spacing: 8

    Flow {
        spacing: 8
        Layout.fillWidth: true
        Layout.topMargin: 4
        Repeater {
            model: chips.choices.sources
            delegate: Chip {
                required property int index
                required property string modelData
                text: modelData
                iconName: index >= chips.choices.firstPdf ? "clip" : index === 0 ? "page" : "select"
                checkable: true
                checked: chips.choices.chosen[index] ?? false
                onToggled: {
                    chips.choices.choose(index, checked);
                    checked = Qt.binding(() => chips.choices.chosen[index] ?? false);
                }
            }
        }
    }
    RowLayout {
        visible: chips.choices.sources.length > chips.choices.firstPdf
        spacing: 12
        Toggle {
            text: qsTr("Only my highlights")
            enabled: chips.choices.hasHighlights
            checked: chips.choices.onlyHighlights
            onToggled: {
                chips.choices.onlyHighlights = checked;
                checked = Qt.binding(() => chips.choices.onlyHighlights);
            }
        }
        Txt {
            visible: !chips.choices.hasHighlights
            text: qsTr("Highlight or underline something in the PDF first")
            size: 12
            color: Theme.ink3
            Layout.fillWidth: true
        }
    }
}
