import QtQuick
import QtQuick.Templates as T

/// On or off, at once.
T.Switch {
    id: toggle

    /// As a click does, from the keyboard or an assistive tool.
    function press() {
        toggle.toggle();
        toggle.toggled();
        toggle.clicked();
    }

    implicitWidth: text === "" ? 36 : leftPadding + Math.ceil(implicitContentWidth)
    implicitHeight: 28
    leftPadding: text === "" ? 0 : 46
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: toggle.press()
    Accessible.onToggleAction: toggle.press()
    Keys.onReturnPressed: toggle.press()
    Keys.onEnterPressed: toggle.press()

    indicator: Rectangle {
        y: Math.round((toggle.height - height) / 2)
        implicitWidth: 36
        implicitHeight: 20
        radius: 10
        color: toggle.checked ? Theme.accent : Theme.raised
        border.width: 1
        border.color: toggle.checked ? Theme.accentMark : Theme.edge
        Behavior on color { ColorAnimation { duration: Theme.hover } }

        Rectangle {
            x: 4 + toggle.visualPosition * 16
            anchors.verticalCenter: parent.verticalCenter
            width: 12
            height: 12
            radius: 6
            color: toggle.checked ? Theme.onAccent : Theme.edge
            Behavior on x {
                enabled: !toggle.pressed
                NumberAnimation { duration: Theme.select; easing.type: Easing.OutCubic }
            }
        }
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: toggle.down ? Theme.pressTint : toggle.hovered && toggle.enabled ? Theme.hoverTint : "transparent"
        }
        FocusRing { target: toggle; corner: 10 }
    }
    contentItem: Txt {
        text: toggle.text
        weight: 500
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
