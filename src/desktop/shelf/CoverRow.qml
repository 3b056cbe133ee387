import QtQuick
import Tessary.Kit
import Tessary.Shelf

/// Ways to make the cover of a draft, each shown on a small cover. `aspect` is what they differ in: "material" or
/// "pattern".
Flow {
    id: row

    required property NotebookDraft draft
    property string aspect
    property var values: []
    property var names: []
    property string value
    signal picked(string value)

    spacing: 4
    Accessible.role: Accessible.Grouping

    Repeater {
        id: options
        model: row.values
        delegate: PickButton {
            id: option
            required property int index
            required property string modelData

            implicitWidth: 50
            implicitHeight: 70
            chosen: modelData === row.value
            siblings: options
            place: index
            Accessible.name: row.names[index]
            onClicked: row.picked(modelData)

            background: Rectangle {
                radius: 6
                color: option.chosen ? Theme.accentSoft : option.hovered ? Theme.hoverTint : "transparent"
                border.width: option.chosen ? 1 : 0
                border.color: Theme.accentMark
            }
            CoverItem {
                x: 9
                y: 5
                width: 32
                height: 42
                color: row.draft.shownColor
                material: row.aspect === "material" ? option.modelData : row.draft.material
                pattern: row.aspect === "pattern" ? option.modelData : row.draft.pattern
                dark: Theme.dark
            }
            Txt {
                y: 51
                width: option.width
                text: row.names[option.index]
                size: 12
                weight: option.chosen ? 500 : 400
                color: option.chosen ? Theme.ink : Theme.ink2
                horizontalAlignment: Text.AlignHCenter
                Accessible.ignored: true
            }
        }
    }
}
