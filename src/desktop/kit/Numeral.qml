import QtQuick

/// A number that changes: every digit takes the same width, so that nothing beside it moves.
Row {
    id: numeral

    property string text
    property int size: 13
    property int weight: 600
    property color color: Theme.ink

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    TextMetrics {
        id: zero
        font.family: numeral.size >= 24 ? Theme.display : Theme.ui
        font.pixelSize: numeral.size
        font.weight: numeral.weight
        text: "0"
    }
    Repeater {
        model: numeral.text.length
        delegate: Txt {
            required property int index
            readonly property string digit: numeral.text.charAt(index)
            width: digit >= "0" && digit <= "9" ? Math.ceil(zero.advanceWidth) : implicitWidth
            text: digit
            size: numeral.size
            weight: numeral.weight
            color: numeral.color
            font.letterSpacing: 0
            elide: Text.ElideNone
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }
    }
}
