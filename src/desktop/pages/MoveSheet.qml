import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages
import Tessary.Desk

/// Asks where a page shall stand: in a notebook, or under another page.
Sheet {
    id: sheet

    required property Desk desk
    required property PageTreeModel tree

    function ask(page: string) {
        filter.text = "";
        targets.pageId = "";
        targets.pageId = page;
        list.currentIndex = 0;
        open();
        filter.forceActiveFocus();
    }
    function take(target: string, isPage: bool) {
        close();
        if (isPage)
            sheet.tree.setParentOf(targets.pageId, target);
        else
            sheet.tree.moveToNotebook(targets.pageId, target);
    }
    function takeRow(row: var) {
        if (row.target)
            sheet.take(row.target, row.isPage);
    }
    function takeCurrent() { sheet.takeRow(targets.at(Math.max(0, list.currentIndex))); }

    sheetWidth: 480
    iconName: "arrow"
    title: qsTr("Move to")
    subtitle: qsTr("Its subpages go along.")
    rejectText: qsTr("Cancel")

    MoveTargets {
        id: targets
        desk: sheet.desk
        filter: filter.text
    }
    SearchField {
        id: filter
        Layout.fillWidth: true
        placeholderText: qsTr("Notebook or page")
        onAccepted: sheet.takeCurrent()
        onTextChanged: list.currentIndex = 0
        Keys.onDownPressed: list.incrementCurrentIndex()
        Keys.onUpPressed: list.decrementCurrentIndex()
    }
    ListView {
        id: list
        Layout.fillWidth: true
        Layout.preferredHeight: 300
        clip: true
        model: targets
        activeFocusOnTab: true
        keyNavigationEnabled: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: Scrollbar {}
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Places")
        Keys.onReturnPressed: sheet.takeCurrent()
        delegate: MenuRow {
            id: line
            required property int index
            required property string target
            required property string title
            required property int depth
            required property bool isPage
            required property string color
            required property bool here
            width: list.width
            text: title
            enabled: !here
            focusPolicy: Qt.NoFocus
            leftPadding: 38 + depth * 16
            rightPadding: 90
            current: list.currentIndex === index
            Accessible.name: isPage ? qsTr("Under “%1”").arg(title) : title
            onClicked: sheet.take(target, isPage)
            Swatch {
                visible: !line.isPage
                x: 12
                anchors.verticalCenter: parent.verticalCenter
                color: line.color === "" ? Theme.edge : line.color
            }
            Icon {
                visible: line.isPage
                x: line.leftPadding - 24
                anchors.verticalCenter: parent.verticalCenter
                name: "page"
                size: 16
                color: Theme.ink3
            }
            Txt {
                visible: line.here
                anchors.right: parent.right
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("It is here")
                size: 12
                color: Theme.ink3
                Accessible.ignored: true
            }
        }
    }
}
