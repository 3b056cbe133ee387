import QtQuick
import QtQuick.Templates as T

/// "primary" once on a screen; "secondary"; "ghost", text only; "soft", the accent's pale fill; "danger".
T.Button {
    id: button

    property string iconName
    property string kind: "secondary"
    /// Its height: 28, 36 or 44.
    property int controlSize: 36
    property string keyText
    /// Drawn as under the pointer.
    property bool lit: hovered
    property color focusColor: Theme.focus

    readonly property bool filled: kind === "primary" || kind === "danger"
    property color base: kind === "primary" ? Theme.accentFill : kind === "danger" ? Theme.bad
                                : kind === "secondary" ? Theme.raised : kind === "soft" ? Theme.accentSoft
                                : "transparent"
    property color foreground: filled ? Theme.onColor(base) : kind === "ghost" ? Theme.ink2 : Theme.ink
    readonly property real corner: controlSize >= 44 ? 10 : controlSize >= 32 ? 8 : 6

    /// As a click does, from the keyboard or an assistive tool.
    function press() {
        if (button.checkable) {
            button.toggle();
            button.toggled();
        }
        button.clicked();
    }

    implicitHeight: controlSize
    implicitWidth: text === "" ? controlSize : implicitContentWidth + leftPadding + rightPadding
    leftPadding: text === "" ? 0 : controlSize >= 44 ? 20 : controlSize >= 36 ? 14 : 10
    rightPadding: leftPadding
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: button.press()
    Keys.onReturnPressed: button.press()
    Keys.onEnterPressed: button.press()

    background: Rectangle {
        radius: button.corner
        color: button.base
        border.width: button.filled || button.kind === "secondary" ? 1 : 0
        border.color: button.filled ? Theme.mix(button.base, Theme.darkest, 0.22) : Theme.edge

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: button.down ? Theme.alpha(button.foreground, 0.09)
                 : button.lit && button.enabled ? Theme.alpha(button.foreground, 0.05)
                 : Theme.alpha(button.foreground, 0)
            Behavior on color { ColorAnimation { duration: Theme.hover; easing.type: Easing.OutQuad } }
        }
        FocusRing { target: button; corner: button.corner; border.color: button.focusColor }
    }

    contentItem: ButtonFace {
        text: button.text
        iconName: button.iconName
        keyText: button.keyText
        controlSize: button.controlSize
        color: button.foreground
        fill: button.filled ? button.base : "transparent"
    }
}
