import QtQuick
import QtQuick.Templates as T

/// A button with a picture only; `label` is its name and its tooltip.
T.Button {
    id: button

    property string iconName
    property string label
    /// Its side: 28, 32 or 36.
    property int controlSize: 32
    property bool lit: hovered
    property color focusColor: Theme.focus
    /// Of its picture.
    property color tint: checked ? Theme.ink : Theme.ink2

    /// As a click does, from the keyboard or an assistive tool.
    function press() {
        if (button.checkable) {
            button.toggle();
            button.toggled();
        }
        button.clicked();
    }

    implicitWidth: controlSize
    implicitHeight: controlSize
    padding: 0
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.role: checkable ? Accessible.CheckBox : Accessible.Button
    Accessible.name: label
    Accessible.checkable: checkable
    Accessible.checked: checked
    Accessible.onPressAction: button.press()
    Accessible.onToggleAction: button.press()
    Keys.onReturnPressed: button.press()
    Keys.onEnterPressed: button.press()

    background: Rectangle {
        radius: button.controlSize >= 32 ? 8 : 6
        color: button.checked ? Theme.accentSoft : "transparent"

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: button.down ? Theme.pressTint : button.lit && button.enabled ? Theme.hoverTint
                 : Theme.alpha(Theme.ink, 0)
            Behavior on color { ColorAnimation { duration: Theme.hover; easing.type: Easing.OutQuad } }
        }
        FocusRing { target: button; corner: button.controlSize >= 32 ? 8 : 6; border.color: button.focusColor }
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: button.iconName
            size: button.controlSize >= 32 ? 20 : 16
            color: button.tint
            filled: button.checked && button.iconName === "star"
        }
    }

    // A popup for each button would be costly, so it is made when someone lingers.
    Loader {
        active: button.label !== "" && (button.hovered || button.visualFocus)
        sourceComponent: Tip {
            parent: button
            text: button.label
            visible: button.hovered || button.visualFocus
        }
    }
}
