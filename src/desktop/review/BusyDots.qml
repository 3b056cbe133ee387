import QtQuick
import Tessary.Kit

/// Something is under way, and nobody knows for how long.
Row {
    id: dots

    property bool running: true
    property int step: 0

    spacing: 4
    Accessible.ignored: true

    Timer {
        interval: 240
        repeat: true
        running: dots.running && !Theme.reduceMotion
        onTriggered: dots.step = (dots.step + 1) % 3
    }
    Repeater {
        model: 3
        delegate: Rectangle {
            required property int index
            width: 6
            height: 6
            radius: 3
            anchors.verticalCenter: parent.verticalCenter
            color: dots.step === index ? Theme.accentMark : Theme.line
            Behavior on color { ColorAnimation { duration: Theme.select } }
        }
    }
}
