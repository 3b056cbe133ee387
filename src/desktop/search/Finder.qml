import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit

/// One line to type in above a list that follows it: up and down choose, Return takes, Escape leaves. The list lies on
/// top of the window, as high as it needs.
T.Popup {
    id: finder

    property alias text: field.text
    property alias placeholderText: field.placeholderText
    property string iconName: "search"
    property alias model: list.model
    property alias delegate: list.delegate
    property alias count: list.count
    property alias currentIndex: list.currentIndex
    /// What Return does, beside its key.
    property string actionText
    /// At the right of the footer.
    property string note
    /// In place of the list while it is empty.
    property string emptyText
    property string listName
    signal taken(int row)

    function show() {
        field.clear();
        finder.open();
        field.forceActiveFocus();
    }
    function take(row: int) {
        if (row < 0 || row >= list.count)
            return;
        finder.close();
        finder.taken(row);
    }
    function move(steps: int) {
        if (list.count > 0)
            list.currentIndex = Math.max(0, Math.min(list.count - 1, list.currentIndex + steps));
        list.positionViewAtIndex(list.currentIndex, ListView.Contain);
    }

    readonly property real room: (parent?.height ?? 600) - 2 * y
    readonly property real listHeight: list.count > 0 ? list.contentHeight + 16 : 96

    parent: T.Overlay.overlay
    x: Math.round(((parent?.width ?? 900) - width) / 2)
    y: Math.min(96, Math.round((parent?.height ?? 600) * 0.1))
    width: Math.min(680, (parent?.width ?? 900) - 48)
    height: Math.min(room, listHeight + 101)
    modal: true
    focus: true
    padding: 0
    onClosed: field.clear()
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    background: Surface { elevation: 3; radius: 16; fill: Theme.paper }

    contentItem: ColumnLayout {
        spacing: 0

        T.TextField {
            id: field
            Layout.fillWidth: true
            Layout.preferredHeight: 56
            z: 1
            leftPadding: 52
            rightPadding: 20
            verticalAlignment: TextInput.AlignVCenter
            color: Theme.ink
            placeholderTextColor: Theme.ink3
            selectionColor: Theme.highlight
            selectedTextColor: Theme.ink
            selectByMouse: true
            font.family: Theme.ui
            font.pixelSize: 18
            background: FinderEdge {}
            Accessible.role: Accessible.EditableText
            Accessible.searchEdit: true
            Accessible.name: placeholderText
            Accessible.description: list.currentItem?.Accessible.name ?? ""

            Keys.onUpPressed: finder.move(-1)
            Keys.onDownPressed: finder.move(1)
            Keys.onReturnPressed: finder.take(list.currentIndex)
            Keys.onEnterPressed: finder.take(list.currentIndex)
            Keys.onPressed: event => {
                event.accepted = event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown;
                if (event.accepted)
                    finder.move(event.key === Qt.Key_PageDown ? 6 : -6);
            }

            Icon {
                x: 20
                anchors.verticalCenter: parent.verticalCenter
                name: finder.iconName
                color: Theme.ink3
            }
            Txt {
                visible: field.text === "" && field.preeditText === ""
                x: field.leftPadding
                width: field.width - field.leftPadding - field.rightPadding
                height: field.height
                verticalAlignment: Text.AlignVCenter
                text: field.placeholderText
                size: 18
                color: field.placeholderTextColor
                Accessible.ignored: true
            }
        }
        Divider { Layout.fillWidth: true }

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            ListView {
                id: list
                anchors.fill: parent
                anchors.leftMargin: 8
                anchors.rightMargin: 8
                topMargin: 8
                bottomMargin: 8
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                highlightMoveDuration: 0
                cacheBuffer: 0  // what is being made ahead would be in the way of the next letter's rows
                Accessible.role: Accessible.List
                Accessible.name: finder.listName
                T.ScrollBar.vertical: Scrollbar {}

                onModelChanged: currentIndex = 0
                Connections {
                    target: list.model
                    function onModelReset() {
                        list.currentIndex = 0;
                        list.positionViewAtBeginning();
                    }
                }
                section.property: "section"
                section.delegate: Txt {
                    required property string section
                    visible: section !== ""
                    leftPadding: 12
                    topPadding: section === "" ? 0 : 10
                    bottomPadding: section === "" ? 0 : 4
                    height: section === "" ? 0 : implicitHeight
                    text: section
                    size: 12
                    weight: 600
                    color: Theme.ink3
                }
            }
            Txt {
                visible: list.count === 0
                anchors.centerIn: parent
                width: parent.width - 64
                horizontalAlignment: Text.AlignHCenter
                text: finder.emptyText
                size: 15
                wrap: true
                color: Theme.ink2
            }
        }

        Divider { Layout.fillWidth: true }
        FinderEdge {
            Layout.fillWidth: true
            Layout.preferredHeight: 43
            z: 1
            FinderHints {
                anchors.fill: parent
                actionText: finder.actionText
                note: finder.note
            }
        }
    }

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
        Behavior on opacity { NumberAnimation { duration: Theme.hover } }
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hover }
        NumberAnimation { property: "scale"; from: 0.98; to: 1; duration: Theme.slide; easing.type: Easing.OutQuint }
    }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.hover } }
}
