import QtQuick
import Tessary.Kit

/// What the shades of the year mean.
Row {
    spacing: 6
    Accessible.ignored: true

    Txt {
        text: qsTr("Less")
        size: 12
        color: Theme.ink2
        Accessible.ignored: true
    }
    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4
        Repeater {
            model: 5
            delegate: Rectangle {
                required property int index
                width: 12
                height: 12
                radius: 3
                color: Theme.heat[index]
            }
        }
    }
    Txt {
        text: qsTr("More")
        size: 12
        color: Theme.ink2
        Accessible.ignored: true
    }
}
