import QtQuick
import QtQuick.Templates as T

/// A line of a list that opens.
T.ItemDelegate {
    id: row

    property string iconName
    /// Whether room is kept for a picture that is not there.
    property bool iconRoom: false
    property bool current: false

    implicitWidth: leftPadding + Math.ceil(implicitContentWidth) + rightPadding
    implicitHeight: 32
    leftPadding: iconRoom ? 34 : 10
    rightPadding: 10
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.onPressAction: row.clicked()

    background: Rectangle {
        radius: 6
        color: row.down ? Theme.pressTint : row.current || row.hovered ? Theme.mix(Theme.raised, Theme.ink, 0.07)
             : "transparent"

        Icon {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            name: row.iconName
            size: 16
            color: Theme.ink
        }
    }
    contentItem: Txt {
        text: row.text
        weight: 500
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
