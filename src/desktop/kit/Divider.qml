import QtQuick

/// A hairline.
Rectangle {
    property bool vertical: false

    implicitWidth: vertical ? 1 : 24
    implicitHeight: vertical ? 24 : 1
    color: Theme.line
    Accessible.ignored: true
}
