import QtQuick
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages

/// All tags of the library, to narrow a list down to one.
T.Popup {
    id: picker

    required property PageTags tags
    property var offers: []
    signal picked(string tag)

    onAboutToShow: {
        offers = tags.all();
        list.currentIndex = 0;
    }

    width: 224
    implicitHeight: Math.min(contentItem.implicitHeight + 8, 360)
    padding: 4
    margins: 8
    focus: true
    background: Surface { elevation: 2; stroke: Theme.edge }
    contentItem: ListView {
        id: list
        implicitHeight: Math.max(contentHeight, 48)
        model: picker.offers
        clip: true
        focus: true
        keyNavigationEnabled: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: Scrollbar {}
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Tags")
        function take(tag: string) {
            picker.close();
            picker.picked(tag);
        }
        Keys.onReturnPressed: if (currentItem) list.take(picker.offers[currentIndex].name)
        delegate: MenuRow {
            id: line
            required property int index
            required property var modelData
            width: list.width
            text: modelData.name
            leftPadding: 30
            rightPadding: 36
            focusPolicy: Qt.NoFocus
            current: list.currentIndex === index
            Accessible.name: modelData.pages === 1 ? qsTr("%1, 1 page").arg(text)
                                                   : qsTr("%1, %2 pages").arg(text).arg(modelData.pages)
            onClicked: list.take(modelData.name)
            Rectangle {
                x: 10
                anchors.verticalCenter: parent.verticalCenter
                width: 10
                height: 10
                radius: 5
                color: line.modelData.color === "" ? "transparent" : line.modelData.color
                border.width: line.modelData.color === "" ? 1 : 0
                border.color: Theme.edge
            }
            Txt {
                anchors.right: parent.right
                anchors.rightMargin: 10
                anchors.verticalCenter: parent.verticalCenter
                text: line.modelData.pages
                size: 12
                color: Theme.ink3
                Accessible.ignored: true
            }
        }
        Txt {
            anchors.centerIn: parent
            visible: picker.offers.length === 0
            text: qsTr("No page has a tag yet.")
            color: Theme.ink3
        }
    }
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hover } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.hover } }
}
