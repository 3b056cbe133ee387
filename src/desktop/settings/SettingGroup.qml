import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// Settings that belong together, on a card with a heading.
ColumnLayout {
    id: group

    property string title
    default property alias content: column.data

    spacing: 8
    Layout.fillWidth: true

    Txt {
        visible: group.title !== ""
        text: group.title
        size: 15
        weight: 600
        Layout.fillWidth: true
        Accessible.role: Accessible.Heading
    }
    Surface {
        Layout.fillWidth: true
        implicitHeight: column.implicitHeight + 8

        ColumnLayout {
            id: column
            anchors { fill: parent; leftMargin: 16; rightMargin: 16; topMargin: 4; bottomMargin: 4 }
            spacing: 0
        }
    }
}
