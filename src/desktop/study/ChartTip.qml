import QtQuick
import Tessary.Kit

/// What is pointed at in a chart. `at` is the middle of its place, `above` the line it stands on.
Rectangle {
    id: tip

    property string text
    property real at: 0
    property real above: 0

    x: Math.round(Math.max(0, Math.min((parent?.width ?? 0) - width, at - width / 2)))
    y: Math.round(above - height - 6)
    z: 1
    visible: text !== ""
    width: label.implicitWidth + 20
    height: 24
    radius: 6
    color: Theme.ink

    Txt {
        id: label
        anchors.centerIn: parent
        text: tip.text
        size: 12
        weight: 600
        color: Theme.paper
        Accessible.ignored: true
    }
}
