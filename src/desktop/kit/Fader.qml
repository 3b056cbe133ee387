import QtQuick
import QtQuick.Templates as T

/// A value along a line.
T.Slider {
    id: fader

    implicitWidth: 200
    implicitHeight: 28
    leftPadding: 2
    rightPadding: 2
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.Slider

    background: Item {
        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            height: 4
            radius: 2
            color: Theme.edge
        }
        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(4, fader.visualPosition * parent.width)
            height: 4
            radius: 2
            color: Theme.accentMark
        }
    }
    handle: Surface {
        x: fader.leftPadding + fader.visualPosition * (fader.availableWidth - width)
        y: Math.round((fader.height - height) / 2)
        width: 20
        height: 20
        radius: 10
        elevation: 1
        stroke: fader.hovered || fader.pressed ? Theme.ink3 : Theme.edge
        fill: fader.pressed ? Theme.mix(Theme.raised, Theme.ink, 0.09) : Theme.raised
        FocusRing { target: fader; corner: 10 }
    }
}
