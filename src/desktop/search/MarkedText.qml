import QtQuick
import Tessary.Kit
import Tessary.Search

/// Text with parts of it marked. `marks` is a list of maps of "start" and "length".
Item {
    id: marked

    property string text
    property var marks: []
    property int size: 13
    property int weight: 400
    property color color: Theme.ink
    /// More than one: it wraps.
    property int lines: 1

    implicitWidth: Math.ceil(label.implicitWidth)
    implicitHeight: label.implicitHeight

    TextMarks {
        id: layout
        text: marked.text
        font: label.font
        wrapWidth: marked.lines > 1 ? marked.width : 0
        lineHeight: marked.lines > 1 ? label.lineHeight : label.implicitHeight
        marks: marked.marks ?? []  // a row that is going has none
    }
    FontMetrics {
        id: metrics
        font: label.font
    }
    Repeater {
        model: layout.boxes
        delegate: Rectangle {
            required property rect modelData
            visible: modelData.x < marked.width && modelData.y < label.height
            x: modelData.x - 1
            y: modelData.y - 1
            width: Math.min(modelData.width, marked.width - modelData.x) + 2
            height: metrics.height + 2
            radius: 3
            color: Theme.highlight
        }
    }
    Txt {
        id: label
        width: marked.width
        text: marked.text
        size: marked.size
        weight: marked.weight
        color: marked.color
        wrap: marked.lines > 1
        elide: Text.ElideRight
        maximumLineCount: marked.lines
        Accessible.ignored: true
    }
}
