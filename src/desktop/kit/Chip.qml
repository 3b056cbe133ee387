import QtQuick
import QtQuick.Templates as T

/// A word that can be chosen, taken away (Delete does so too) or merely read. One that does something when pressed gets
/// `focusPolicy: Qt.StrongFocus`.
T.AbstractButton {
    id: chip

    property string iconName
    /// A state's colour; none when transparent.
    property color tint: "transparent"
    property bool closable: false
    /// Its height: 24 or 28.
    property int controlSize: 28
    signal closed()

    readonly property bool tinted: tint.a > 0
    readonly property bool live: checkable || focusPolicy !== Qt.NoFocus
    readonly property color foreground: tinted ? Theme.readable(tint, Theme.soft(tint), 4.6)
                                      : checked ? Theme.ink : Theme.ink2

    /// As a click does, from the keyboard or an assistive tool.
    function press() {
        if (chip.checkable) {
            chip.toggle();
            chip.toggled();
        }
        chip.clicked();
    }

    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    implicitHeight: controlSize
    leftPadding: controlSize < 28 ? 8 : 11
    rightPadding: closable ? 4 : leftPadding
    focusPolicy: checkable || closable ? Qt.StrongFocus : Qt.NoFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: checkable ? Accessible.CheckBox : live ? Accessible.Button : Accessible.StaticText
    Accessible.name: text
    Accessible.checkable: checkable
    Accessible.checked: checked
    Accessible.onPressAction: chip.press()
    Accessible.onToggleAction: chip.press()
    Keys.onReturnPressed: chip.press()
    Keys.onEnterPressed: chip.press()
    Keys.onDeletePressed: if (chip.closable) chip.closed()

    background: Rectangle {
        radius: height / 2
        color: chip.tinted ? Theme.soft(chip.tint) : chip.checked ? Theme.accentSoft : "transparent"
        border.width: chip.tinted ? 0 : 1
        border.color: chip.checked ? Theme.accentMark : chip.checkable ? Theme.edge : Theme.line
        Behavior on color { ColorAnimation { duration: Theme.select; easing.type: Easing.OutCubic } }

        Rectangle {
            anchors.fill: parent
            visible: chip.live && chip.enabled
            radius: parent.radius
            color: chip.down ? Theme.pressTint : chip.hovered ? Theme.hoverTint : "transparent"
        }
        FocusRing { target: chip; corner: chip.height / 2 }
    }
    contentItem: Row {
        spacing: 6

        Icon {
            visible: chip.iconName !== ""
            anchors.verticalCenter: parent.verticalCenter
            name: chip.iconName
            size: 16
            color: chip.foreground
        }
        Txt {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, 240)
            text: chip.text
            size: chip.controlSize < 28 ? 12 : 13
            weight: 500
            color: chip.foreground
            Accessible.ignored: true
        }
        ChipCross {
            visible: chip.closable
            anchors.verticalCenter: parent.verticalCenter
            color: chip.foreground
            Accessible.name: qsTr("Remove %1").arg(chip.text)
            onClicked: chip.closed()
        }
    }
}
