import QtQuick
import QtQuick.Templates as T
import Tessary.Kit

/// The panes' names; the arrow keys go through them.
ListView {
    id: list

    signal picked(int index)

    implicitWidth: 168
    implicitHeight: contentHeight
    spacing: 2
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    highlightFollowsCurrentItem: false
    keyNavigationEnabled: false
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Settings")
    Keys.onUpPressed: if (currentIndex > 0) picked(currentIndex - 1)
    Keys.onDownPressed: if (currentIndex < count - 1) picked(currentIndex + 1)

    delegate: T.AbstractButton {
        id: row
        required property int index
        required property string name
        required property string iconName
        readonly property bool selected: ListView.isCurrentItem

        width: list.width
        implicitHeight: 36
        text: name
        focusPolicy: Qt.NoFocus
        Accessible.role: Accessible.ListItem
        Accessible.name: name
        Accessible.selected: selected
        Accessible.onPressAction: row.clicked()
        onClicked: list.picked(index)

        background: Item {
            Rectangle {
                anchors.fill: parent
                radius: 8
                color: row.selected ? Theme.accentSoft
                     : row.down ? Theme.pressTint : row.hovered ? Theme.hoverTint : "transparent"
            }
            Rectangle {
                visible: row.selected
                width: 3
                height: 16
                radius: 1.5
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.accentMark
            }
            FocusRing {
                target: list
                shown: list.activeFocus && row.selected
            }
        }
        contentItem: Item {
            Icon {
                x: 12
                anchors.verticalCenter: parent.verticalCenter
                name: row.iconName
                color: row.selected ? Theme.ink : Theme.ink2
            }
            Txt {
                x: 42
                width: parent.width - x - 8
                anchors.verticalCenter: parent.verticalCenter
                text: row.name
                weight: row.selected ? 600 : 500
                color: row.selected ? Theme.ink : Theme.ink2
                Accessible.ignored: true
            }
        }
    }
}
