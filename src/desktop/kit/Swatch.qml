import QtQuick

/// A notebook, so small that only its colour and spine are left.
Rectangle {
    id: swatch

    /// Its height.
    property real size: 18

    implicitWidth: Math.round(size * 7 / 9)
    implicitHeight: size
    radius: Math.max(2, size / 6)
    border.width: 1
    border.color: Theme.dark ? Theme.alpha("#FFFFFF", 0.28) : Theme.alpha("#000000", 0.25)
    Accessible.ignored: true

    Rectangle {
        x: Math.round(swatch.width * 0.22)
        y: 1
        width: 1
        height: swatch.height - 2
        color: Theme.alpha("#000000", 0.25)
    }
}
