import QtQuick
import QtQuick.Templates as T
import Tessary.Kit

/// One of the faces of the panel.
T.AbstractButton {
    id: tab

    property bool current: false
    property int count: -1

    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    implicitHeight: 32
    leftPadding: 12
    rightPadding: 12
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.PageTab
    Accessible.name: text
    Accessible.selected: current
    Accessible.onPressAction: tab.clicked()
    Keys.onReturnPressed: tab.clicked()
    Keys.onEnterPressed: tab.clicked()

    background: Rectangle {
        radius: 16
        color: tab.current ? Theme.accentSoft : "transparent"
        border.width: tab.current ? 1 : 0
        border.color: Theme.accentMark
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: tab.down ? Theme.pressTint : tab.hovered ? Theme.hoverTint : "transparent"
        }
        FocusRing { target: tab; corner: 16 }
    }
    contentItem: Row {
        spacing: 6
        Txt {
            anchors.verticalCenter: parent.verticalCenter
            text: tab.text
            weight: 600
            color: tab.current ? Theme.ink : Theme.ink2
            Accessible.ignored: true
        }
        Txt {
            visible: tab.count > 0
            anchors.verticalCenter: parent.verticalCenter
            text: tab.count
            weight: 600
            color: tab.current ? Theme.ink : Theme.ink3
            Accessible.ignored: true
        }
    }
}
