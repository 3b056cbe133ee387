import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit

/// One place in the sidebar: an icon or a notebook's swatch, a name, a count.
T.AbstractButton {
    id: row

    property string iconName
    property color swatch: "transparent"
    property bool selected: false
    property bool folded: false
    property int count: 0
    property bool marked: false

    implicitHeight: folded ? 40 : 32
    Layout.fillWidth: true
    leftPadding: folded ? 0 : 10
    rightPadding: folded ? 0 : 10
    hoverEnabled: true

    Accessible.role: Accessible.ListItem
    Accessible.name: count > 0 ? qsTr("%1, %2").arg(text).arg(count) : text
    Accessible.selected: selected
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    background: Item {
        Surface {
            anchors.fill: parent
            visible: row.selected
            radius: 8
            elevation: 1
            fill: Theme.raised
        }
        Rectangle {
            anchors.fill: parent
            visible: !row.selected && (row.hovered || row.down)
            radius: 8
            color: Theme.alpha(Theme.ink, row.down ? 0.09 : 0.05)
        }
        Rectangle {
            visible: row.selected
            width: 3
            height: 16
            radius: 1.5
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.accentMark
        }
        FocusRing { target: row }
    }
    contentItem: Item {
        Icon {
            id: icon
            visible: row.iconName !== ""
            name: row.iconName
            color: row.selected ? Theme.ink : Theme.ink2
            x: row.folded ? (parent.width - width) / 2 : 0
            anchors.verticalCenter: parent.verticalCenter
        }
        Swatch {
            visible: row.iconName === ""
            color: row.swatch
            x: row.folded ? (parent.width - width) / 2 : 3
            anchors.verticalCenter: parent.verticalCenter
        }
        Txt {
            visible: !row.folded
            x: 30
            width: parent.width - x - (badge.visible ? badge.width + 6 : plain.visible ? plain.width + 6 : 0)
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            weight: row.selected ? 600 : 500
            color: row.selected ? Theme.ink : Theme.ink2
            Accessible.ignored: true
        }
        Rectangle {
            id: badge
            visible: row.marked && row.count > 0
            width: Math.max(24, number.implicitWidth + 12)
            height: 20
            radius: 10
            x: row.folded ? parent.width - width : parent.width - width
            y: row.folded ? 0 : (parent.height - height) / 2
            color: Theme.accentFill
            border.color: Theme.accentEdge
            Txt {
                id: number
                anchors.centerIn: parent
                text: row.count
                size: 12
                weight: 700
                color: Theme.onAccent
                Accessible.ignored: true
            }
        }
        Txt {
            id: plain
            visible: !row.marked && row.count > 0 && !row.folded
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: row.count
            size: 12
            weight: 500
            color: Theme.ink3
            Accessible.ignored: true
        }
    }
}
