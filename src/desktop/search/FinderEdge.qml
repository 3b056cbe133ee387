import QtQuick
import Tessary.Kit

/// Above and below a finder's list: hides what the software renderer draws of icons beyond the list's edge.
Item {
    Rectangle {
        anchors.fill: parent
        anchors.margins: 1
        radius: 15
        color: Theme.paper
    }
}
