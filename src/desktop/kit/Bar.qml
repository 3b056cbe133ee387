import QtQuick

/// A share of the whole as a length; the number stands beside it.
Rectangle {
    id: bar

    property real value: 0
    property color fill: Theme.accentMark
    property string label

    implicitWidth: 96
    implicitHeight: 6
    radius: height / 2
    color: Theme.line
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label
    Accessible.description: qsTr("%1 %").arg(Math.round(value * 100))

    Rectangle {
        visible: bar.value > 0
        width: Math.max(height, bar.width * Math.min(1, bar.value))
        height: bar.height
        radius: bar.radius
        color: bar.fill
        Behavior on width { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutQuint } }
    }
}
