import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// How often each rating was given.
RowLayout {
    id: chart

    /// Again first.
    required property list<int> counts
    readonly property list<string> names: [qsTr("Again"), qsTr("Hard"), qsTr("Good"), qsTr("Easy")]
    readonly property list<color> tones: [Theme.bad, Theme.warn, Theme.good, Theme.info]
    readonly property int most: Math.max(1, ...counts)
    readonly property int barsHeight: 96

    spacing: 24
    Accessible.role: Accessible.Chart
    Accessible.name: qsTr("Ratings")

    Repeater {
        model: 4
        delegate: ColumnLayout {
            id: column
            required property int index
            readonly property int count: chart.counts[index] ?? 0

            spacing: 6
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("%1: %2").arg(chart.names[index]).arg(count)

            Item {
                Layout.fillWidth: true
                implicitHeight: chart.barsHeight + 24

                Rectangle {
                    id: bar
                    anchors.bottom: parent.bottom
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: Math.min(72, parent.width)
                    height: column.count > 0 ? Math.max(6, chart.barsHeight * column.count / chart.most) : 2
                    radius: Math.min(6, height / 2)
                    color: column.count > 0 ? chart.tones[column.index] : Theme.line
                }
                Txt {
                    anchors.bottom: bar.top
                    anchors.bottomMargin: 4
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: column.count
                    size: 13
                    weight: 600
                    Accessible.ignored: true
                }
            }
            Txt {
                text: chart.names[column.index]
                size: 12
                color: Theme.ink2
                horizontalAlignment: Text.AlignHCenter
                Layout.fillWidth: true
                Accessible.ignored: true
            }
        }
    }
}
