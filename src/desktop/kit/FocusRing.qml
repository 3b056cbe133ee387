import QtQuick

/// Around its parent, while `target` has the focus by keyboard.
Rectangle {
    id: ring

    property var target: parent
    property bool shown: target?.visualFocus ?? target?.activeFocus ?? false
    /// The radius of what it goes around.
    property real corner: 8

    visible: shown
    anchors.fill: parent
    anchors.margins: -4
    radius: corner + 4
    color: "transparent"
    border.width: 2
    border.color: Theme.focus
}
