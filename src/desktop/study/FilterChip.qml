import QtQuick
import QtQuick.Templates as T
import Tessary.Kit

/// One of the states that cards are filtered by, with how many there are.
T.AbstractButton {
    id: chip

    property int count: 0
    property bool current: false
    property color tone: Theme.ink2

    implicitWidth: implicitContentWidth + 22
    implicitHeight: 28
    leftPadding: 11
    rightPadding: 11
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: qsTr("%1, %2").arg(text).arg(count)
    Accessible.checkable: true
    Accessible.checked: current
    Accessible.onPressAction: chip.clicked()
    Keys.onReturnPressed: chip.clicked()
    Keys.onEnterPressed: chip.clicked()

    background: Rectangle {
        radius: 14
        color: chip.current ? Theme.accentSoft : "transparent"
        border.width: 1
        border.color: chip.current ? Theme.accentMark : Theme.edge
        Behavior on color { ColorAnimation { duration: Theme.hover } }

        Rectangle {
            anchors.fill: parent
            radius: 14
            color: chip.down ? Theme.pressTint : chip.hovered ? Theme.hoverTint : Theme.alpha(Theme.ink, 0)
        }
        FocusRing { target: chip; corner: 14 }
    }
    contentItem: Row {
        spacing: 6
        Txt {
            anchors.verticalCenter: parent.verticalCenter
            text: chip.text
            weight: 500
            color: chip.current ? Theme.ink : Theme.ink2
            Accessible.ignored: true
        }
        Txt {
            anchors.verticalCenter: parent.verticalCenter
            text: chip.count
            weight: 600
            color: chip.current ? Theme.ink : chip.tone
            Accessible.ignored: true
        }
    }
}
