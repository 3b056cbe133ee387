import QtQuick
import QtQuick.Layouts

/// A screen's frame: title and subtitle at the left, what is declared inside in a row at the right, `content` below.
FocusScope {
    id: screen

    property string title
    property string subtitle
    default property alias actions: row.data
    property alias content: body.data

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 32
        spacing: 24

        RowLayout {
            Layout.fillWidth: true
            spacing: 16

            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2
                Txt {
                    text: screen.title
                    size: 24
                    weight: 700
                    Layout.fillWidth: true
                    Accessible.role: Accessible.Heading
                }
                Txt {
                    visible: screen.subtitle !== ""
                    text: screen.subtitle
                    color: Theme.ink2
                    Layout.fillWidth: true
                }
            }
            RowLayout {
                id: row
                spacing: 8
            }
        }
        Item {
            id: body
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
