import QtQuick
import Tessary.Kit

/// A side of a card. Long texts are smaller; blanks and their terms stand out.
Txt {
    id: side

    property string plain
    /// Instead of `plain`, with the blanks as "u" elements.
    property string rich
    property bool filled: false
    property int largest: 32

    readonly property string look: filled
        ? "<style>u{text-decoration:none;background-color:%1;color:%2}</style>".arg(Theme.highlight).arg(Theme.ink)
        : "<style>u{background-color:%1;color:%2}</style>".arg(Theme.accentSoft).arg(Theme.accentMark)

    text: rich === "" ? plain : look + rich
    textFormat: rich === "" ? Text.PlainText : Text.RichText
    size: Math.min(largest, plain.length <= 90 ? 32 : plain.length <= 220 ? 24 : 18)
    weight: 600
    wrap: true
    horizontalAlignment: Text.AlignHCenter
    Accessible.name: plain
}
