import QtQuick
import QtQuick.Templates as T
import Tessary.Kit

/// One kind of what can be written; several may be chosen.
T.AbstractButton {
    id: tile

    property string iconName

    /// As a click does, from the keyboard or an assistive tool.
    function press() {
        tile.toggle();
        tile.toggled();
    }

    implicitHeight: 76
    padding: 10
    checkable: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: tile.press()
    Accessible.onToggleAction: tile.press()
    Keys.onReturnPressed: tile.press()
    Keys.onEnterPressed: tile.press()

    background: Surface {
        radius: 10
        elevation: tile.checked ? 0 : 1
        fill: tile.checked ? Theme.accentSoft : Theme.raised
        stroke: tile.checked ? Theme.accentMark : Theme.edge
        strokeWidth: tile.checked ? 2 : 1
        Rectangle {
            anchors.fill: parent
            radius: 10
            color: tile.down ? Theme.pressTint : tile.hovered ? Theme.hoverTint : Theme.alpha(Theme.ink, 0)
            Behavior on color { ColorAnimation { duration: Theme.hover; easing.type: Easing.OutQuad } }
        }
        FocusRing { target: tile; corner: 10 }
    }
    contentItem: Item {
        Icon {
            name: tile.iconName
            color: Theme.ink
        }
        Rectangle {
            anchors.right: parent.right
            width: 20
            height: 20
            radius: 10
            color: tile.checked ? Theme.accentMark : "transparent"
            border.width: tile.checked ? 0 : 1.5
            border.color: Theme.edge
            Icon {
                anchors.centerIn: parent
                visible: tile.checked
                name: "check"
                size: 14
                color: Theme.onColor(Theme.accentMark)
            }
        }
        Txt {
            anchors.bottom: parent.bottom
            width: parent.width
            text: tile.text
            weight: 600
            Accessible.ignored: true
        }
    }
}
