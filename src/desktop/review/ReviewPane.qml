import QtQuick
import QtQuick.Templates as T
import Tessary.Kit

/// Holds what is in its middle while it fits, and scrolls when it does not.
Flickable {
    id: pane

    default property alias content: inside.data
    /// Room at the right for the scroll bar.
    property real gutter: 0

    function scroll(by: real) { contentY = Math.max(0, Math.min(contentHeight - height, contentY + by)); }

    clip: contentHeight > height
    contentHeight: Math.max(height, inside.implicitHeight)
    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight > height
    T.ScrollBar.vertical: Scrollbar {}

    Column {
        id: inside
        width: pane.width - pane.gutter
        y: Math.max(0, (pane.height - implicitHeight) / 2)
    }
}
