import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// Which keys do what in a finder.
RowLayout {
    id: hints

    property string actionText
    property string note

    spacing: 6

    component Hint: RowLayout {
        id: hint
        property var keys: []
        property string text
        spacing: 4
        Repeater {
            model: hint.keys
            delegate: Kbd {
                required property string modelData
                text: modelData
            }
        }
        Txt {
            text: hint.text
            size: 12
            color: Theme.ink3
            Layout.rightMargin: 10
        }
    }

    Hint {
        keys: ["↑", "↓"]
        text: qsTr("choose")
        Layout.leftMargin: 20
    }
    Hint {
        keys: ["↵"]
        text: hints.actionText
    }
    Hint {
        keys: ["Esc"]
        text: qsTr("close")
    }
    Txt {
        text: hints.note
        size: 12
        color: Theme.ink3
        horizontalAlignment: Text.AlignRight
        Layout.fillWidth: true
        Layout.rightMargin: 20
    }
}
