import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// A field with its label at the left.
RowLayout {
    id: row

    property string label
    /// Of what the label stands beside: the first line when it has several.
    property real lineHeight: 36
    default property alias content: holder.data

    spacing: 12
    Layout.fillWidth: true

    Txt {
        text: row.label
        weight: 500
        color: Theme.ink2
        verticalAlignment: Text.AlignVCenter
        Layout.preferredWidth: 64
        Layout.preferredHeight: row.lineHeight
        Layout.alignment: Qt.AlignTop
        Accessible.ignored: true
    }
    RowLayout {
        id: holder
        spacing: 8
        Layout.fillWidth: true
    }
}
