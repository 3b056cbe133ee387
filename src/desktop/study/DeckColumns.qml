import QtQuick

/// Where the columns of the list stand, in its rows as above them. Page and lasting go where there is no room for them.
QtObject {
    property real width: 0

    readonly property bool wide: width >= 820
    readonly property real gap: 12
    readonly property real pageWidth: Math.round(Math.min(200, width * 0.16))
    readonly property real dueWidth: 76
    readonly property real recallWidth: 44
    readonly property real lastsWidth: 48

    readonly property real front: 68
    readonly property real more: width - 32
    readonly property real lasts: more - gap - lastsWidth
    readonly property real recall: (wide ? lasts : more) - gap - recallWidth
    readonly property real due: recall - gap - dueWidth
    readonly property real flag: due - gap - 16
    readonly property real page: flag - gap - pageWidth
    readonly property real texts: (wide ? page : flag) - gap - front
    readonly property real frontWidth: Math.round(texts * 0.58) - gap
    readonly property real back: front + frontWidth + gap
    readonly property real backWidth: texts - frontWidth - gap
}
