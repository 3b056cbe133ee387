import QtQuick
import QtQuick.Layouts

/// Where nothing is yet: one sentence, and the button that changes it; beside it another way to begin.
ColumnLayout {
    id: empty

    property string text
    property string actionText
    signal action()
    property string otherText
    signal otherAction()

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
    RowLayout {
        spacing: 8
        Layout.alignment: Qt.AlignHCenter
        PushButton {
            visible: empty.otherText !== ""
            text: empty.otherText
            onClicked: empty.otherAction()
        }
        PushButton {
            visible: empty.actionText !== ""
            kind: "primary"
            text: empty.actionText
            onClicked: empty.action()
        }
    }
}
