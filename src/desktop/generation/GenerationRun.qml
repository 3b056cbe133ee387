import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Generation

/// A run as it goes on, and its cards as they come.
ColumnLayout {
    id: run

    required property GenerationModel generation
    /// What there is of height.
    property real room: 400

    spacing: 16

    GenerationProgress {
        id: header
        generation: run.generation
        Layout.fillWidth: true
    }
    GenerationWarnings {
        visible: run.generation.warnings.length > 0 && run.generation.written === 0
        lines: run.generation.warnings
        Layout.fillWidth: true
    }

    ListView {
        id: list

        property int editing: -1
        property int firstNew: 0
        readonly property int longestWait: 720
        readonly property real cardWidth: width - leftMargin - rightMargin

        visible: run.generation.running || count > 0
        Layout.fillWidth: true
        Layout.preferredHeight: Math.max(140, run.room - header.implicitHeight - run.spacing)
        Layout.leftMargin: -4
        Layout.rightMargin: -14
        leftMargin: 4
        rightMargin: 14
        clip: true
        spacing: 12
        cacheBuffer: 1600
        boundsBehavior: Flickable.StopAtBounds
        model: run.generation
        T.ScrollBar.vertical: Scrollbar {}
        Accessible.role: Accessible.List
        Accessible.name: qsTr("New cards")

        header: Item {
            width: list.cardWidth
            implicitHeight: warnings.visible ? warnings.implicitHeight + 12 : 0
            GenerationWarnings {
                id: warnings
                width: parent.width
                visible: lines.length > 0 && list.count > 0
                lines: run.generation.warnings
            }
        }
        delegate: GeneratedCard {
            width: list.cardWidth
            generation: run.generation
            editing: index >= 0 && list.editing === index
            onEdit: list.editing = index
            onHeightChanged: {
                if (editing)
                    list.positionViewAtIndex(index, ListView.Contain);
            }
            onClosed: list.editing = -1
            ListView.onAdd: {
                if (!Theme.reduceMotion)
                    arrive(Math.min(list.longestWait, 60 * Math.max(0, index - list.firstNew)));
            }
        }
        footer: Item {
            width: list.cardWidth
            implicitHeight: run.generation.running ? 56 : 0
            visible: run.generation.running
            Rectangle {
                y: list.count > 0 ? 12 : 0
                width: parent.width
                height: 44
                radius: 10
                color: Theme.sunken
                Row {
                    x: 16
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 12
                    Rectangle {
                        width: 240
                        height: 8
                        radius: 4
                        color: Theme.line
                    }
                    Rectangle {
                        width: 120
                        height: 8
                        radius: 4
                        color: Theme.line
                    }
                }
            }
        }
        // Once the list has taken in what is new.
        Timer {
            id: scroll
            property bool end: false
            function to(end: bool) {
                scroll.end = end;
                scroll.restart();
            }
            interval: 0
            onTriggered: end ? list.positionViewAtEnd() : list.positionViewAtBeginning()
        }
        Connections {
            target: run.generation
            function onRowsInserted(parent, first) {
                list.firstNew = first;
                if (first > 0 && list.atYEnd && list.editing < 0)
                    scroll.to(true);
            }
            function onEnded() { scroll.to(false); }
            function onModelReset() { list.editing = -1; }
        }
    }
}
