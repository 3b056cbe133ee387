import QtQuick
import QtQuick.Templates as T

/// Slim, and only where there is more to see.
T.ScrollBar {
    id: bar

    implicitWidth: orientation === Qt.Vertical ? 10 : 60
    implicitHeight: orientation === Qt.Vertical ? 60 : 10
    padding: 2
    minimumSize: 0.06
    visible: policy !== T.ScrollBar.AlwaysOff && size < 1

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed ? Theme.ink3 : bar.hovered ? Theme.edge : Theme.mix(Theme.paper, Theme.edge, 0.6)
        Behavior on color { ColorAnimation { duration: Theme.hover } }
    }
}
