import QtQuick
import QtQuick.Layouts

/// Where nothing is yet: one sentence, and the button that changes it.
ColumnLayout {
    id: empty

    property string text
    property string actionText
    signal action()

    spacing: 16

    Plim {
        size: 96
        Layout.alignment: Qt.AlignHCenter
    }
    Txt {
        text: empty.text
        size: 15
        wrap: true
        color: Theme.ink2
        horizontalAlignment: Text.AlignHCenter
        Layout.alignment: Qt.AlignHCenter
        Layout.fillWidth: true
        Layout.maximumWidth: 360
    }
    PushButton {
        visible: empty.actionText !== ""
        kind: "primary"
        text: empty.actionText
        Layout.alignment: Qt.AlignHCenter
        onClicked: empty.action()
    }
}
