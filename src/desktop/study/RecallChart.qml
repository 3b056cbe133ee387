import QtQuick
import Tessary.Kit
import Tessary.Study

/// Reviewed cards by their chance of recall now, a tenth each.
ChartArea {
    id: chart

    required property StudyModel study

    readonly property var counts: study.recall
    readonly property int most: Math.max(1, ...counts)
    readonly property real pitch: width / Math.max(1, counts.length)
    readonly property real plot: height - 24
    readonly property real room: plot - 22

    implicitHeight: 148
    count: counts.length
    start: counts.length - 1
    name: qsTr("Cards by chance of recall now")
    summary: study.recallText
    indexAt: (x, y) => Math.max(0, Math.min(chart.counts.length - 1, Math.floor(x / chart.pitch)))
    textOf: index => {
        const cards = chart.counts[index];
        return qsTr("%1 to %2 %: %3").arg(index * 10).arg(index * 10 + 10)
                                     .arg(cards === 1 ? qsTr("1 card") : qsTr("%1 cards").arg(cards));
    }

    Repeater {
        model: chart.counts.length
        delegate: Item {
            id: step
            required property int index
            readonly property int cards: chart.counts[index] ?? 0
            x: index * chart.pitch
            width: chart.pitch
            height: chart.height

            Rectangle {
                id: bar
                x: 2
                y: Math.round(chart.plot - height)
                width: Math.round(parent.width) - 4
                height: step.cards > 0 ? Math.max(3, Math.round(chart.room * step.cards / chart.most)) : 2
                radius: Math.min(3, height / 2)
                color: step.cards === 0 ? Theme.line : step.index < 6 ? Theme.bad : step.index < 8 ? Theme.warn
                     : Theme.good
            }
            Txt {
                visible: step.cards > 0
                anchors.horizontalCenter: bar.horizontalCenter
                anchors.bottom: bar.top
                anchors.bottomMargin: 2
                text: step.cards > 9999 ? qsTr("%1k").arg(Math.round(step.cards / 1000)) : step.cards
                size: 12
                weight: 600
                color: Theme.ink2
                Accessible.ignored: true
            }
            Txt {
                anchors.horizontalCenter: bar.horizontalCenter
                y: chart.plot + 6
                text: step.index === 0 ? "0" : qsTr("%1+").arg(step.index * 10)
                visible: chart.pitch >= 26 || step.index % 2 === 1
                size: 12
                color: Theme.ink3
                Accessible.ignored: true
            }
        }
    }
    ChartTip {
        visible: chart.current >= 0
        text: chart.currentText
        at: (chart.current + 0.5) * chart.pitch
        above: chart.plot - chart.room * (chart.counts[chart.current] ?? 0) / chart.most - 16
    }
}
