import QtQuick

/// The key that does the same.
Rectangle {
    id: kbd

    property string text
    /// What it lies on where that is a button's own colour.
    property color on: "transparent"

    readonly property bool onFill: on.a > 0

    implicitWidth: Math.max(20, label.implicitWidth + 10)
    implicitHeight: 20
    radius: 5
    color: onFill ? Theme.alpha(Theme.onColor(on), 0.12) : Theme.sunken
    border.width: onFill ? 0 : 1
    border.color: Theme.line
    Accessible.ignored: true

    Txt {
        id: label
        anchors.centerIn: parent
        text: kbd.text
        size: 12
        weight: 500
        color: kbd.onFill ? Theme.onColor(kbd.on) : Theme.ink3
        Accessible.ignored: true
    }
}
