import QtQuick
import QtQuick.Templates as T

/// A box to tick.
T.CheckBox {
    id: check

    /// As a click does, from the keyboard or an assistive tool.
    function press() {
        check.toggle();
        check.toggled();
        check.clicked();
    }

    implicitWidth: text === "" ? 20 : leftPadding + Math.ceil(implicitContentWidth)
    implicitHeight: 28
    leftPadding: text === "" ? 0 : 30
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: check.press()
    Accessible.onToggleAction: check.press()
    Keys.onReturnPressed: check.press()
    Keys.onEnterPressed: check.press()

    indicator: Rectangle {
        y: Math.round((check.height - height) / 2)
        implicitWidth: 20
        implicitHeight: 20
        radius: 6
        color: check.checked ? Theme.accent : Theme.raised
        border.width: check.checked ? 1 : 1.5
        border.color: check.checked ? Theme.accentMark : Theme.edge
        Behavior on color { ColorAnimation { duration: Theme.hover } }

        Icon {
            anchors.centerIn: parent
            visible: check.checked
            name: "check"
            size: 14
            color: Theme.onAccent
        }
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: check.down ? Theme.pressTint : check.hovered && check.enabled ? Theme.hoverTint : "transparent"
        }
        FocusRing { target: check; corner: 6 }
    }
    contentItem: Txt {
        text: check.text
        weight: 500
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
