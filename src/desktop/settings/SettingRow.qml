import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// A name and what it means at the left, the control at the right, and below them why a change was not taken.
Item {
    id: row

    property string title
    property string detail
    property string problem
    /// No hairline above the first of a group.
    property bool first: false
    default property alias control: holder.data

    readonly property real middle: Math.max(words.implicitHeight, holder.implicitHeight, 28)

    implicitHeight: 10 + middle + 10 + (note.visible ? note.implicitHeight + 6 : 0)
    Layout.fillWidth: true

    Divider {
        visible: !row.first
        width: parent.width
    }
    Column {
        id: words
        y: 10 + (row.middle - implicitHeight) / 2
        width: row.width - holder.implicitWidth - 24
        Txt {
            visible: text !== ""
            width: parent.width
            text: row.title
            weight: 600
            wrap: true
        }
        Txt {
            visible: text !== ""
            width: parent.width
            text: row.detail
            color: Theme.ink2
            wrap: true
        }
    }
    RowLayout {
        id: holder
        anchors.right: parent.right
        y: 10 + (row.middle - implicitHeight) / 2
        spacing: 8
    }
    Note {
        id: note
        y: 10 + row.middle + 6
        width: parent.width
        text: row.problem
        tone: "bad"
    }
}
