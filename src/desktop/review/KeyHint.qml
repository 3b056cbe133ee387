import QtQuick
import Tessary.Kit

/// A key and what it does.
Row {
    id: hint

    property string keys
    property string text

    spacing: 8
    Accessible.ignored: true

    Kbd {
        anchors.verticalCenter: parent.verticalCenter
        text: hint.keys
    }
    Txt {
        anchors.verticalCenter: parent.verticalCenter
        text: hint.text
        size: 12
        color: Theme.ink3
        Accessible.ignored: true
    }
}
