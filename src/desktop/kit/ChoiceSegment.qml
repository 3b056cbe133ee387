import QtQuick
import QtQuick.Templates as T

/// One of the options of a choice.
T.AbstractButton {
    id: segment

    property bool current: false

    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: 30
    leftPadding: 12
    rightPadding: 12
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: current
    Accessible.onPressAction: segment.clicked()

    background: Item {
        Surface {
            anchors.fill: parent
            radius: 6
            elevation: 1
            stroke: Theme.edge
            opacity: segment.current ? 1 : 0
            Behavior on opacity { NumberAnimation { duration: Theme.select; easing.type: Easing.OutCubic } }
        }
        Rectangle {
            anchors.fill: parent
            radius: 6
            visible: !segment.current
            color: segment.down ? Theme.pressTint : segment.hovered ? Theme.hoverTint : "transparent"
        }
    }
    contentItem: Txt {
        text: segment.text
        weight: segment.current ? 600 : 500
        color: segment.current ? Theme.ink : Theme.ink2
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
