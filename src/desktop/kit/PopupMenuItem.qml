import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

/// A line of a menu.
T.MenuItem {
    id: entry

    property string iconName
    property string keyText
    property bool danger: false

    readonly property color foreground: danger ? Theme.bad : Theme.ink

    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: visible ? 32 : 0
    leftPadding: 10
    rightPadding: 10
    spacing: 8
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.onPressAction: entry.triggered()

    background: Rectangle {
        radius: 6
        color: entry.down ? Theme.pressTint : entry.highlighted ? Theme.mix(Theme.raised, entry.foreground, 0.08)
             : "transparent"
    }
    contentItem: RowLayout {
        spacing: 8

        Icon {
            visible: entry.iconName !== "" || entry.checkable
            name: entry.checkable ? (entry.checked ? "check" : "") : entry.iconName
            size: 16
            color: entry.danger ? Theme.bad : Theme.ink2
        }
        Txt {
            text: entry.text
            weight: 500
            color: entry.foreground
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Txt {
            visible: entry.keyText !== ""
            text: entry.keyText
            size: 12
            color: Theme.ink3
            Layout.leftMargin: 16
            Accessible.ignored: true
        }
        Icon {
            visible: entry.subMenu !== null
            name: "right"
            size: 16
            color: Theme.ink3
        }
    }
}
