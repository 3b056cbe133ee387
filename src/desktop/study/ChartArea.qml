import QtQuick
import Tessary.Kit

/// A drawing of values, each of which can be read: under the pointer, or by the arrow keys. `indexAt` tells which value
/// lies where; as text they all stand in `summary`.
FocusScope {
    id: area

    property string name
    property string summary
    property int count: 0
    /// The value that the keys begin with.
    property int start: 0
    /// How far up and down go; 0 where there is nothing that way.
    property int step: 1
    property int stepAcross: 0
    property var indexAt: (x, y) => -1
    property var textOf: index => ""

    property int byKey: -1
    readonly property int byPointer: pointer.hovered
        ? indexAt.call(null, pointer.point.position.x, pointer.point.position.y) : -1
    property bool keysLast: false
    /// The value that is read, by what was used last; -1 for none.
    readonly property int current: keysLast || byPointer < 0 ? byKey : byPointer

    readonly property string currentText: current >= 0 ? textOf.call(null, current) : ""

    function move(by: int) {
        area.keysLast = true;
        if (area.count > 0)
            area.byKey = Math.max(0, Math.min(area.count - 1, (area.byKey < 0 ? area.start : area.byKey) + by));
    }

    activeFocusOnTab: count > 0
    onActiveFocusChanged: {
        byKey = activeFocus ? start : -1;
        keysLast = activeFocus;
    }
    onByPointerChanged: keysLast = false
    onCountChanged: if (byKey >= count) byKey = count - 1

    Accessible.role: Accessible.Chart
    Accessible.name: name
    Accessible.description: currentText === "" ? summary : currentText
    Accessible.focusable: true

    Keys.onLeftPressed: area.move(-area.step)
    Keys.onRightPressed: area.move(area.step)
    Keys.onUpPressed: event => area.across(event, -1)
    Keys.onDownPressed: event => area.across(event, 1)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted)
            area.move(event.key === Qt.Key_Home ? -area.count : area.count);
    }
    function across(event: var, way: int) {
        event.accepted = area.stepAcross > 0;
        if (event.accepted)
            area.move(way * area.stepAcross);
    }

    HoverHandler { id: pointer }
    FocusRing {
        target: area
        corner: 6
        anchors.margins: -6
    }
}
