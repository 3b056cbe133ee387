import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages

/// One page in the tree, which can be dragged by the mouse; the right button asks for its menu.
T.ItemDelegate {
    id: row

    required property PageTreeModel tree
    required property int index
    required property string pageId
    required property string title
    required property int depth
    required property bool hasChildren
    required property bool expanded
    required property int due
    required property bool pinned
    required property bool favorite
    required property bool archived
    required property bool expired
    property bool selected: false
    /// The list's keyboard stands here.
    property bool reached: false
    property bool dragging: false
    signal menuAsked(point at)
    signal dragMoved(point at)
    signal dropped()
    signal dragGivenUp()

    readonly property string spoken: {
        const all = [title, pinned ? qsTr("pinned") : "", favorite ? qsTr("favorite") : "",
            archived ? qsTr("archived") : "", expired ? qsTr("expired") : "", due > 0 ? qsTr("%1 due").arg(due) : ""];
        return all.filter(Boolean).join(", ");
    }
    readonly property var icons: {
        const all = [expired ? "clock" : "", archived ? "archive" : "", favorite ? "star" : "", pinned ? "pin" : ""];
        return all.filter(Boolean);
    }

    implicitHeight: 32
    leftPadding: 8 + depth * 16
    rightPadding: 8
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    opacity: dragging ? 0.5 : 1
    text: title

    Accessible.role: Accessible.TreeItem
    Accessible.name: spoken
    Accessible.selected: selected
    Accessible.onPressAction: row.clicked()

    background: Item {
        Surface {
            anchors.fill: parent
            visible: row.selected
            radius: 8
            elevation: 1
            Rectangle {
                y: 8
                width: 3
                height: 16
                radius: 1.5
                color: Theme.accentMark
            }
        }
        Rectangle {
            anchors.fill: parent
            visible: !row.selected && row.hovered
            radius: 8
            color: Theme.hoverTint
        }
        Repeater {
            model: row.depth
            delegate: Rectangle {
                required property int index
                x: 17 + index * 16
                y: -1
                width: 1
                height: row.height + 2
                color: Theme.line
            }
        }
        FocusRing {
            target: row
            shown: row.reached
            anchors.margins: 0
            corner: 4
        }
    }
    contentItem: RowLayout {
        z: 2
        spacing: 4

        Item {
            implicitWidth: 18
            implicitHeight: 28
            IconButton {
                id: fold
                anchors.centerIn: parent
                visible: row.hasChildren
                focusPolicy: Qt.NoFocus
                iconName: row.expanded ? "down" : "right"
                label: row.expanded ? qsTr("Fold “%1”").arg(row.title) : qsTr("Unfold “%1”").arg(row.title)
                controlSize: 28
                onClicked: row.tree.toggle(row.pageId)
            }
        }
        Txt {
            text: row.title
            weight: row.selected || row.depth === 0 ? 600 : 500
            color: row.selected ? Theme.ink : Theme.ink2
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Repeater {
            model: row.icons
            delegate: Icon {
                required property string modelData
                name: modelData
                size: 14
                filled: name === "star"
                color: name === "clock" ? Theme.warn : name === "star" ? Theme.accentMark : Theme.ink3
            }
        }
        Txt {
            visible: row.due > 0
            text: row.due
            size: 12
            weight: 600
            color: Theme.accentText
            Accessible.ignored: true
        }
    }

    MouseArea {
        id: mouse
        property point start
        property bool byMouse: false
        readonly property int threshold: 8

        anchors.fill: parent
        z: 1
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        // A finger scrolls the list, the mouse drags the page.
        preventStealing: byMouse
        onPressed: event => {
            start = Qt.point(event.x, event.y);
            byMouse = event.source === Qt.MouseEventNotSynthesized && event.button === Qt.LeftButton;
        }
        onPositionChanged: event => {
            const far = Math.hypot(event.x - start.x, event.y - start.y) > threshold;
            if (byMouse && (row.dragging || far))
                row.dragMoved(Qt.point(event.x, event.y));
        }
        onReleased: if (row.dragging) row.dropped()
        onCanceled: if (row.dragging) row.dragGivenUp()
        onClicked: event => {
            if (event.button === Qt.RightButton)
                row.menuAsked(Qt.point(event.x, event.y));
            else if (Math.hypot(event.x - start.x, event.y - start.y) <= threshold)
                row.clicked();
        }
    }
}
