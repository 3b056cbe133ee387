import QtQuick
import Tessary.Kit
import Tessary.Study

/// How many cards fall due on each of the next days; today's bar is the accent's.
ChartArea {
    id: chart

    required property StudyModel study
    /// Days that are shown.
    property int days: 30

    readonly property var counts: firstOf(study.forecast)
    readonly property int ceiling: niceTop(Math.max(0, ...counts))
    readonly property real axis: 36
    readonly property real pitch: (width - axis) / Math.max(1, counts.length)
    readonly property real plot: height - 28
    readonly property int labelEvery: Math.max(1, Math.ceil(76 / pitch))

    function firstOf(all: var): var { return all.slice(0, chart.days); }
    /// The next round number that can be halved.
    function niceTop(most: int): int {
        for (let scale = 1; ; scale *= 10) {
            for (const step of [2, 4, 6, 8, 10, 12, 16])
                if (step * scale >= most)
                    return step * scale;
        }
    }

    implicitHeight: 148
    count: counts.length
    name: qsTr("Cards due in the next %1 days").arg(days)
    summary: study.forecastText
    indexAt: (x, y) => {
        const at = Math.floor((x - chart.axis) / chart.pitch);
        return at >= 0 && at < chart.counts.length ? at : -1;
    }
    textOf: index => {
        const cards = chart.counts[index];
        const text = qsTr("%1: %2").arg(chart.study.forecastNames[index])
                                   .arg(cards === 1 ? qsTr("1 card") : qsTr("%1 cards").arg(cards));
        const late = index === 0 ? chart.study.overdue : 0;
        return late > 0 ? qsTr("%1, %2 overdue").arg(text).arg(late) : text;
    }

    Repeater {
        model: [chart.ceiling, chart.ceiling / 2, 0]
        delegate: Item {
            id: mark
            required property int index
            required property int modelData
            width: chart.width
            y: Math.round(chart.plot * index / 2)
            Txt {
                anchors.verticalCenter: parent.top
                width: chart.axis - 14
                horizontalAlignment: Text.AlignRight
                text: mark.modelData
                size: 12
                color: Theme.ink3
                Accessible.ignored: true
            }
            Rectangle {
                x: chart.axis - 4
                width: parent.width - x
                height: 1
                color: Theme.line
            }
        }
    }
    Repeater {
        model: chart.counts.length
        delegate: Item {
            id: day
            required property int index
            readonly property int cards: chart.counts[index] ?? 0
            readonly property bool isToday: index === 0
            x: chart.axis + index * chart.pitch
            width: chart.pitch
            height: chart.height

            Rectangle {
                id: bar
                x: Math.round((parent.width - width) / 2)
                y: Math.round(chart.plot - height)
                width: Math.round(Math.max(3, Math.min(32, parent.width * 0.66)))
                height: day.cards > 0 ? Math.max(3, Math.round(chart.plot * day.cards / chart.ceiling)) : 0
                radius: Math.min(3, height / 2)
                color: day.isToday ? Theme.accent : day.index === chart.current ? Theme.ink2 : Theme.edge
                border.width: day.isToday ? 1 : 0
                border.color: Theme.accentEdge
            }
            Txt {
                visible: day.index % chart.labelEvery === 0 && chart.width - day.x > 30
                x: Math.round(Math.max(-day.x + chart.axis - 8, (parent.width - width) / 2))
                y: chart.plot + 8
                text: chart.study.forecastTicks[day.index] ?? ""
                size: 12
                weight: day.isToday ? 600 : 400
                color: day.isToday ? Theme.ink : Theme.ink3
                Accessible.ignored: true
            }
        }
    }
    ChartTip {
        visible: chart.current >= 0
        text: chart.currentText
        at: chart.axis + (chart.current + 0.5) * chart.pitch
        above: chart.plot * (1 - (chart.counts[chart.current] ?? 0) / chart.ceiling)
    }
}
