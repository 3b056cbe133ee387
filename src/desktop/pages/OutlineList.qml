import QtQuick
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages

/// The headings of the open page; each leads to its place in the text.
ListView {
    id: list

    required property PageOutline outline
    signal goTo(int position)

    clip: true
    spacing: 2
    model: outline
    activeFocusOnTab: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: Scrollbar {}
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Outline")
    Keys.onReturnPressed: {
        const line = currentItem as MenuRow;
        if (line)
            line.clicked();
    }

    delegate: MenuRow {
        id: line
        required property int index
        required property string title
        required property int depth
        required property int position
        width: list.width
        leftPadding: 12 + depth * 16
        focusPolicy: Qt.NoFocus
        text: title
        current: list.activeFocus && list.currentIndex === index
        Accessible.name: title
        onClicked: list.goTo(position)
        contentItem: Txt {
            text: line.title
            weight: line.depth === 0 ? 600 : 500
            color: line.depth === 0 ? Theme.ink : Theme.ink2
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }
    EmptyState {
        anchors.centerIn: parent
        width: parent.width
        visible: list.count === 0
        text: qsTr("No headings yet. A line that begins with “# ” becomes one.")
    }
}
