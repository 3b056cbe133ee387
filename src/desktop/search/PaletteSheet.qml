import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Search

/// Everything that the window can do and show, by its name.
Finder {
    id: sheet

    required property CommandPalette commands

    placeholderText: qsTr("Do something, or go somewhere")
    listName: qsTr("Commands and places")
    iconName: "right"
    actionText: qsTr("go")
    emptyText: qsTr("Nothing is called like that.")
    model: sheet.commands
    onAboutToShow: sheet.commands.open()
    onTextChanged: sheet.commands.query = text
    onTaken: row => sheet.commands.run(row)

    delegate: FinderRow {
        id: row

        required property int index
        required property string title
        required property var marks
        required property string detail
        required property string iconName
        required property string color
        required property string keyText

        current: ListView.isCurrentItem
        text: detail === "" ? title : qsTr("%1, %2").arg(title).arg(detail)
        Accessible.description: keyText
        onClicked: sheet.take(index)
        onPointed: sheet.currentIndex = index

        contentItem: RowLayout {
            spacing: 12

            Item {
                implicitWidth: 20
                implicitHeight: 20
                Icon {
                    visible: row.iconName !== ""
                    name: row.iconName
                }
                Swatch {
                    visible: row.iconName === ""
                    anchors.centerIn: parent
                    color: row.color === "" ? "transparent" : row.color
                }
            }
            MarkedText {
                text: row.title
                marks: row.marks
                weight: 500
                Layout.fillWidth: true
                Layout.maximumWidth: implicitWidth
            }
            Item { Layout.fillWidth: true }
            Txt {
                visible: row.detail !== ""
                text: row.detail
                size: 12
                color: Theme.ink3
                elide: Text.ElideMiddle
                horizontalAlignment: Text.AlignRight
                Layout.maximumWidth: 280
                Accessible.ignored: true
            }
            Kbd {
                visible: row.keyText !== ""
                text: row.keyText
            }
        }
    }
}
