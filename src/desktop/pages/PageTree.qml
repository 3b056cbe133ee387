import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages

/// The pages of a place, directly on the desk.
FocusScope {
    id: side

    required property PageTreeModel tree
    property string current
    signal open(string id)

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 12
        anchors.leftMargin: 4
        spacing: 8

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 36
            Txt {
                text: side.tree.heading
                size: 15
                weight: 700
                Layout.fillWidth: true
                Layout.leftMargin: 8
            }
            IconButton {
                iconName: "plus"
                label: qsTr("New page")
                controlSize: 32
                onClicked: side.open(side.tree.addPage(""))
            }
        }
        SearchField {
            Layout.fillWidth: true
            placeholderText: qsTr("Filter pages")
            onTextChanged: side.tree.filter = text
        }
        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 2
            model: side.tree
            activeFocusOnTab: true
            keyNavigationEnabled: true
            boundsBehavior: Flickable.StopAtBounds
            currentIndex: side.tree.rowOf(side.current)
            Keys.onReturnPressed: side.open(side.tree.pageAt(currentIndex))
            Accessible.role: Accessible.Tree
            Accessible.name: qsTr("Pages")
            delegate: PageTreeRow {
                width: list.width
                tree: side.tree
                selected: pageId === side.current
                onClicked: side.open(pageId)
                onWanted: id => side.open(id)
            }
        }
    }
}
