import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// A name and what it means at the left, the control at the right, and below them why a change was not taken.
ColumnLayout {
    id: row

    property string title
    property string detail
    property string problem
    /// No hairline above the first of a group.
    property bool first: false
    default property alias control: holder.data

    spacing: 0
    Layout.fillWidth: true

    Divider {
        visible: !row.first
        Layout.fillWidth: true
    }
    RowLayout {
        spacing: 24
        Layout.fillWidth: true
        Layout.topMargin: 10
        Layout.bottomMargin: row.problem === "" ? 10 : 4
        Layout.minimumHeight: 36

        ColumnLayout {
            spacing: 0
            Layout.fillWidth: true
            Layout.minimumWidth: 120
            Txt {
                visible: row.title !== ""
                text: row.title
                weight: 600
                wrap: true
                Layout.fillWidth: true
            }
            Txt {
                visible: row.detail !== ""
                text: row.detail
                color: Theme.ink2
                wrap: true
                Layout.fillWidth: true
            }
        }
        RowLayout {
            id: holder
            spacing: 8
            Layout.alignment: Qt.AlignVCenter | Qt.AlignRight
        }
    }
    Note {
        text: row.problem
        failed: true
        Layout.bottomMargin: 10
    }
}
