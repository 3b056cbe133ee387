import QtQuick
import Tessary.Kit

/// A sheet or card. Its one pixel line stays where shadows do not show. With a single layout inside it is as large as
/// that wants to be, and `padding` around.
Item {
    id: surface

    /// 0 lies flat, 1 a card, 2 the sheet at hand, 3 above everything.
    property int elevation: 1
    property real radius: 10
    property color fill: Theme.raised
    property color stroke: Theme.line
    property real strokeWidth: 1
    property real padding: 0
    default property alias content: inner.data

    implicitWidth: (inner.children.length > 0 ? inner.children[0].implicitWidth : 0) + 2 * padding
    implicitHeight: (inner.children.length > 0 ? inner.children[0].implicitHeight : 0) + 2 * padding

    Shadow {
        visible: surface.elevation > 2
        anchors.fill: parent
        anchors.topMargin: 12
        anchors.bottomMargin: -12
        blur: 40
        radius: surface.radius
        color: Theme.alpha(Theme.shadow, Theme.dark ? 0.45 : 0.13)
    }
    Shadow {
        visible: surface.elevation > 1
        anchors.fill: parent
        anchors.topMargin: 8
        anchors.bottomMargin: -8
        blur: 14
        radius: surface.radius
        color: Theme.alpha(Theme.shadow, Theme.dark ? 0.34 : 0.09)
    }
    Shadow {
        visible: surface.elevation > 0
        anchors.fill: parent
        anchors.topMargin: 1
        anchors.bottomMargin: -1
        blur: 2
        radius: surface.radius
        color: Theme.alpha(Theme.shadow, Theme.dark ? 0.3 : 0.07)
    }
    Rectangle {
        anchors.fill: parent
        radius: surface.radius
        color: surface.fill
        border.width: surface.strokeWidth
        border.color: surface.stroke
    }
    Item {
        id: inner
        anchors.fill: parent
        anchors.margins: surface.padding
    }
}
