import QtQuick

/// Text on the type scale: 12, 13, 15, 18, 24, 32, and 56 for one numeral on a screen.
Text {
    id: txt

    property int size: 13
    property int weight: 400
    property bool wrap: false

    readonly property real line: size <= 12 ? 16 : size <= 13 ? 20 : size <= 15 ? 24 : size <= 18 ? 26 : size + 8

    color: Theme.ink
    font.family: size >= 24 ? Theme.display : Theme.ui
    font.pixelSize: size
    font.weight: weight
    font.letterSpacing: size >= 32 ? -0.6 : size >= 24 ? -0.3 : 0
    elide: wrap ? Text.ElideNone : Text.ElideRight
    wrapMode: wrap ? Text.Wrap : Text.NoWrap
    lineHeightMode: wrap ? Text.FixedHeight : Text.ProportionalHeight
    lineHeight: wrap ? line : 1
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
