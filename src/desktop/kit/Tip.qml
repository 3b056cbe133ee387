import QtQuick
import QtQuick.Templates as T

/// What a control without words is for.
T.ToolTip {
    id: tip

    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + 6 : 0
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 8
    horizontalPadding: 8
    verticalPadding: 4
    delay: 500
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    background: Rectangle {
        radius: 6
        color: Theme.ink
    }
    contentItem: Txt {
        text: tip.text
        size: 12
        weight: 500
        color: Theme.paper
    }
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hover } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.hover } }
}
