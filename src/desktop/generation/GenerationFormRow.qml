import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// A line of the form, or several, beside its name.
RowLayout {
    id: row

    property string label
    property string hint
    /// Of what the label stands beside.
    property real lineHeight: 36
    default property alias content: column.data

    spacing: 12
    Layout.fillWidth: true

    ColumnLayout {
        spacing: 0
        Layout.alignment: Qt.AlignTop
        Layout.fillWidth: false
        Layout.minimumWidth: 132
        Layout.maximumWidth: 132
        Txt {
            text: row.label
            weight: 600
            verticalAlignment: Text.AlignVCenter
            Layout.preferredHeight: row.lineHeight
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Txt {
            visible: row.hint !== ""
            text: row.hint
            size: 12
            color: Theme.ink3
            Layout.topMargin: -8
        }
    }
    ColumnLayout {
        id: column
        spacing: 8
        Layout.fillWidth: true
    }
}
