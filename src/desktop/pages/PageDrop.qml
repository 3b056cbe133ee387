import QtQuick
import Tessary.Kit
import Tessary.Pages

/// Over the list of pages: shows where the page that is dragged would stand, and takes it there.
Item {
    id: drop

    required property PageTreeModel tree
    required property ListView list
    readonly property int rowHeight: 32
    readonly property int pitch: rowHeight + list.spacing

    /// The page that is dragged; empty when none is.
    property string page
    property string title
    property point at
    /// The page it would go under; empty: the top level.
    property string target
    property string targetTitle
    /// The row it is over; the line before it when it is between two rows.
    property int row: -1
    property bool between: false
    property bool allowed: false

    readonly property bool active: page !== ""

    function move(dragged: PageTreeRow, where: point) {
        drop.page = dragged.pageId;
        drop.title = dragged.title;
        drop.at = where;
        drop.aim();
    }
    /// The middle of a row is the page itself, its edges are the gaps between pages.
    function aim() {
        const y = drop.at.y + drop.list.contentY - drop.list.originY;
        const over = Math.floor(y / drop.pitch);
        const share = (y - over * drop.pitch) / drop.rowHeight;
        const beyond = over < 0 || over >= drop.list.count;
        drop.between = beyond || share < 0.25 || share > 0.75;
        drop.row = beyond ? (over < 0 ? 0 : drop.list.count) : drop.between && share > 0.5 ? over + 1 : over;
        drop.target = drop.between ? "" : drop.tree.pageAt(drop.row);
        drop.targetTitle = drop.list.itemAtIndex(drop.row)?.title ?? "";
        drop.allowed = drop.tree.canStandUnder(drop.page, drop.target);
    }
    function finish() {
        const page = drop.page;
        drop.page = "";
        if (page !== "" && page !== drop.target)
            drop.tree.setParentOf(page, drop.target);
    }
    function giveUp() { drop.page = ""; }

    visible: active
    clip: true
    Accessible.ignored: true

    Shortcut {
        sequence: "Escape"
        enabled: drop.active
        onActivated: drop.giveUp()
    }
    Timer {
        readonly property int edge: 28
        readonly property int step: drop.at.y < edge ? -8 : drop.at.y > drop.height - edge ? 8 : 0
        interval: 16
        repeat: true
        running: drop.active && step !== 0
        onTriggered: {
            const list = drop.list;
            const last = Math.max(0, list.contentHeight - list.height);
            list.contentY = Math.max(list.originY, Math.min(list.originY + last, list.contentY + step));
            drop.aim();
        }
    }

    readonly property real markY: row * pitch - list.contentY + list.originY

    Rectangle {
        visible: !drop.between
        y: drop.markY
        width: parent.width
        height: drop.rowHeight
        radius: 8
        color: Theme.alpha(drop.allowed ? Theme.accent : Theme.bad, 0.18)
        border.width: 2
        border.color: drop.allowed ? Theme.accentMark : Theme.bad
    }
    Rectangle {
        visible: drop.between
        x: 8
        y: Math.max(0, Math.min(parent.height - 2, drop.markY - 2))
        width: parent.width - 8
        height: 2
        radius: 1
        color: Theme.accentMark
        Rectangle {
            x: -4
            anchors.verticalCenter: parent.verticalCenter
            width: 8
            height: 8
            radius: 4
            color: Theme.desk
            border.width: 2
            border.color: Theme.accentMark
        }
    }
    Surface {
        x: Math.max(0, Math.min(parent.width - width, drop.at.x + 12))
        y: Math.max(0, Math.min(parent.height - height, drop.at.y + 14))
        width: Math.min(Math.max(name.implicitWidth, where.implicitWidth) + 24, parent.width)
        height: 48
        elevation: 2
        Txt {
            id: name
            x: 12
            y: 5
            width: parent.width - 24
            text: drop.title
            weight: 600
        }
        Txt {
            id: where
            x: 12
            y: 26
            width: parent.width - 24
            size: 12
            color: drop.allowed ? Theme.ink2 : Theme.bad
            text: drop.page === drop.target ? qsTr("Stays where it is")
                : !drop.allowed ? qsTr("Cannot stand inside itself")
                : drop.between ? qsTr("To the top level") : qsTr("Under “%1”").arg(drop.targetTitle)
        }
    }
}
