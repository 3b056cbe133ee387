import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages

/// The pages of a place, directly on the desk.
FocusScope {
    id: side

    required property PageTreeModel tree
    required property PageListing listing
    required property PageTags tags
    property string current
    signal open(string id)
    signal moveAsked(string id)

    function follow() {
        const row = side.tree.rowOf(side.current);
        if (row >= 0)
            list.currentIndex = row;
    }
    onCurrentChanged: follow()
    Connections {
        target: side.tree
        function onRefreshed() { side.follow() }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 12
        anchors.leftMargin: 4
        spacing: 8

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 36
            Layout.leftMargin: 8
            spacing: 10
            Swatch {
                visible: side.tree.color !== ""
                size: 22
                color: visible ? side.tree.color : "transparent"
            }
            Txt {
                text: side.tree.heading
                size: 15
                weight: 700
                Layout.fillWidth: true
                Accessible.role: Accessible.Heading
            }
            IconButton {
                iconName: "plus"
                label: qsTr("New page")
                visible: side.tree.place !== "archive"
                onClicked: side.open(side.tree.addPage(""))
            }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 2
            SearchField {
                id: filter
                Layout.fillWidth: true
                Layout.rightMargin: 4
                placeholderText: qsTr("Filter")
                Accessible.name: qsTr("Filter pages")
                onTextChanged: side.tree.filter = text
                Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
                Connections {
                    target: side.tree
                    function onFilterChanged() { filter.text = side.tree.filter }
                }
            }
            IconButton {
                iconName: "tag"
                label: qsTr("Filter by tag")
                checked: side.tree.tag !== ""
                onClicked: picker.open()
                TagPicker {
                    id: picker
                    y: parent.height + 4
                    tags: side.tags
                    onPicked: tag => side.tree.tag = tag
                }
            }
            IconButton {
                iconName: "sort"
                label: qsTr("Sort pages")
                onClicked: sort.popup(this, 0, height + 4)
                PageSortMenu {
                    id: sort
                    listing: side.listing
                }
            }
        }
        Chip {
            visible: side.tree.tag !== ""
            Layout.leftMargin: 4
            text: side.tree.tag
            iconName: "tag"
            tint: side.tree.tag === "" ? "transparent" : side.tags.colorOf(side.tree.tag)
            closable: true
            Accessible.name: qsTr("Only pages with “%1”").arg(text)
            onClosed: side.tree.tag = ""
        }
        ListView {
            id: list
            readonly property bool keyed: activeFocus && byKey
            property bool byKey: false

            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 2
            model: side.tree
            focus: true
            activeFocusOnTab: true
            keyNavigationEnabled: true
            highlightMoveDuration: Theme.select
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: Scrollbar {}
            Accessible.role: Accessible.Tree
            Accessible.name: qsTr("Pages")
            delegate: PageTreeRow {
                id: row
                width: list.width
                tree: side.tree
                selected: pageId === side.current
                reached: list.keyed && ListView.isCurrentItem
                dragging: drop.page === pageId
                onClicked: {
                    list.byKey = false;
                    side.open(pageId);
                }
                onMenuAsked: at => menu.openFor(row, at)
                onDragMoved: at => drop.move(row, row.mapToItem(drop, at.x, at.y))
                onDropped: drop.finish()
                onDragGivenUp: drop.giveUp()
            }

            function pageHere(): string { return side.tree.pageAt(list.currentIndex); }
            Keys.priority: Keys.BeforeItem
            Keys.onReturnPressed: side.open(pageHere())
            Keys.onEnterPressed: side.open(pageHere())
            Keys.onDeletePressed: side.tree.remove(pageHere())
            Keys.onMenuPressed: if (currentItem) menu.openFor(currentItem, Qt.point(24, currentItem.height))
            Keys.onPressed: event => {
                list.byKey = true;
                const outline = event.modifiers === (Qt.ControlModifier | Qt.ShiftModifier);
                const way = event.key === Qt.Key_Right ? 1 : event.key === Qt.Key_Left ? -1 : 0;
                event.accepted = way !== 0 && (outline || event.modifiers === Qt.NoModifier);
                if (!event.accepted)
                    return;
                const page = list.pageHere();
                if (!outline)
                    side.tree.setExpanded(page, way > 0);
                else if (way > 0)
                    side.tree.moveIn(page);
                else
                    side.tree.moveOut(page);
            }
            // The key that led here.
            Keys.onReleased: list.byKey = true
            onActiveFocusChanged: if (!activeFocus) byKey = false

            Txt {
                visible: list.count === 0 && (side.tree.filter !== "" || side.tree.tag !== "")
                width: parent.width
                topPadding: 12
                horizontalAlignment: Text.AlignHCenter
                text: qsTr("No page matches.")
                color: Theme.ink3
            }
            PageDrop {
                id: drop
                parent: list
                anchors.fill: parent
                z: 3
                tree: side.tree
                list: list
            }
        }
    }

    PageTreeMenu {
        id: menu
        tree: side.tree
        onWanted: id => side.open(id)
        onMoveAsked: id => side.moveAsked(id)
    }

    Shortcut {
        sequence: "Ctrl+N"
        enabled: side.tree.place !== "archive"
        onActivated: side.open(side.tree.addPage(""))
    }
}
