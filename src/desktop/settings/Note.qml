import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// What became of something, with a mark that says whether it went well; nothing while it has no text.
RowLayout {
    id: note

    property string text
    property bool failed: false

    visible: text !== ""
    spacing: 6
    Layout.fillWidth: true

    Icon {
        name: note.failed ? "alert" : "check"
        size: 16
        color: note.failed ? Theme.bad : Theme.good
        Layout.alignment: Qt.AlignTop
        Layout.topMargin: 2
    }
    Txt {
        text: note.text
        wrap: true
        color: note.failed ? Theme.bad : Theme.good
        Layout.fillWidth: true
        Accessible.role: Accessible.AlertMessage
    }
}
