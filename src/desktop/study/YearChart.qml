import QtQuick
import Tessary.Kit
import Tessary.Study

/// A year's reviews, day by day.
ChartArea {
    id: chart

    required property StudyModel study

    readonly property int axis: 34
    readonly property int weeks: 53

    implicitHeight: 20 + map.pitch * 7
    count: study.heat.length
    start: count - 1
    step: 7
    stepAcross: 1
    name: qsTr("Reviews of a year")
    summary: study.heatSummary
    indexAt: (x, y) => map.dayAt(x - map.x, y - map.y)
    textOf: index => chart.study.heatText(index)

    Repeater {
        model: chart.study.heatMonths
        delegate: Txt {
            required property var modelData
            x: map.x + modelData.column * map.pitch
            text: modelData.name
            size: 12
            color: Theme.ink2
            Accessible.ignored: true
        }
    }
    Repeater {
        model: [qsTr("Mon"), qsTr("Wed"), qsTr("Fri")]
        delegate: Txt {
            required property int index
            required property string modelData
            y: Math.round(map.y + 2 * index * map.pitch + (map.pitch - 4 - height) / 2)
            text: modelData
            size: 12
            color: Theme.ink2
            Accessible.ignored: true
        }
    }
    HeatMap {
        id: map
        x: chart.axis
        y: 20
        width: implicitWidth
        height: implicitHeight
        pitch: Math.max(8, Math.min(30, Math.floor((chart.width - chart.axis + 4) / chart.weeks)))
        levels: chart.study.heat
        shades: [Theme.heat[0], Theme.heat[1], Theme.heat[2], Theme.heat[3], Theme.heat[4]]
        ink: Theme.ink
        current: chart.current
    }
    ChartTip {
        readonly property rect square: map.squareOf(Math.max(0, chart.current))
        visible: chart.current >= 0
        text: chart.currentText
        at: map.x + square.x + square.width / 2
        above: map.y + square.y
    }
}
