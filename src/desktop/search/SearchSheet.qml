import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Desk
import Tessary.Search

/// Finds pages as one types.
Finder {
    id: sheet

    required property Desk desk
    readonly property alias search: search
    signal openPage(string place, string page)

    /// Prepares the first search.
    function warm() { search.warm(); }

    placeholderText: qsTr("Search titles, tags and text")
    listName: qsTr("Found pages")
    actionText: qsTr("open")
    note: search.summary
    emptyText: text.trim() === "" ? qsTr("Every word you type is looked for. Put a phrase in “quotes”.")
             : search.searching ? qsTr("Looking…")
             : qsTr("No page holds all of these words.")
    model: search
    onTextChanged: search.query = text
    onTaken: row => sheet.openPage(search.placeAt(row), search.pageAt(row))
    onOpened: search.warm()

    SearchModel {
        id: search
        desk: sheet.desk
    }

    delegate: FinderRow {
        id: row

        required property int index
        required property string title
        required property var titleMarks
        required property string excerpt
        required property var excerptMarks
        required property var tags
        required property string path
        required property string color

        current: ListView.isCurrentItem
        text: qsTr("%1, %2").arg(title).arg(path)
        Accessible.description: excerpt
        onClicked: sheet.take(index)
        onPointed: sheet.currentIndex = index

        contentItem: RowLayout {
            spacing: 12

            Item {
                implicitWidth: 20
                implicitHeight: 20
                Layout.alignment: Qt.AlignTop
                Swatch {
                    visible: row.color !== ""
                    anchors.centerIn: parent
                    color: row.color === "" ? "transparent" : row.color
                }
                Icon {
                    visible: row.color === ""
                    name: "page"
                }
            }
            ColumnLayout {
                spacing: 2
                RowLayout {
                    spacing: 6
                    MarkedText {
                        text: row.title
                        marks: row.titleMarks
                        weight: 600
                        Layout.fillWidth: true
                        Layout.maximumWidth: implicitWidth
                    }
                    Repeater {
                        model: row.tags
                        delegate: Rectangle {
                            required property string modelData
                            implicitWidth: Math.min(tag.implicitWidth, 140) + 14
                            implicitHeight: 18
                            radius: 9
                            color: Theme.highlight
                            Txt {
                                id: tag
                                anchors.centerIn: parent
                                width: parent.width - 14
                                text: parent.modelData
                                size: 12
                                Accessible.ignored: true
                            }
                        }
                    }
                    Item { Layout.fillWidth: true }
                    Txt {
                        text: row.path
                        size: 12
                        color: Theme.ink3
                        elide: Text.ElideMiddle
                        horizontalAlignment: Text.AlignRight
                        Layout.maximumWidth: 260
                        Accessible.ignored: true
                    }
                }
                MarkedText {
                    visible: row.excerpt !== ""
                    text: row.excerpt
                    marks: row.excerptMarks
                    color: Theme.ink2
                    lines: 2
                    Layout.fillWidth: true
                }
            }
        }
    }
}
