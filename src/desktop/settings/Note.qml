import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// What became of something, with a mark that says whether it went well; nothing while it has no text.
Item {
    id: note

    property string text
    /// "good", "warn" or "bad".
    property string tone: "good"

    readonly property color ink: tone === "good" ? Theme.good : tone === "warn" ? Theme.warn : Theme.bad

    visible: text !== ""
    implicitHeight: words.implicitHeight
    Layout.fillWidth: true

    Icon {
        y: 2
        name: note.tone === "good" ? "check" : "alert"
        size: 16
        color: note.ink
    }
    Txt {
        id: words
        x: 22
        width: parent.width - x
        text: note.text
        wrap: true
        color: note.ink
        Accessible.role: Accessible.AlertMessage
    }
}
