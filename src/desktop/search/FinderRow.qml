import QtQuick
import QtQuick.Templates as T
import Tessary.Kit

/// One row of a finder: what it holds is laid out between the paddings. The pointer chooses by moving, not by lying
/// where a list comes up.
T.ItemDelegate {
    id: row

    property bool current: false
    signal pointed()

    width: ListView.view?.width ?? 0
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: 12
    rightPadding: 12
    topPadding: 8
    bottomPadding: 8
    focusPolicy: Qt.NoFocus
    hoverEnabled: true

    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selected: current
    Accessible.onPressAction: row.clicked()

    background: Rectangle {
        radius: 8
        color: row.down ? Theme.mix(Theme.paper, Theme.ink, 0.1)
             : row.current ? Theme.mix(Theme.paper, Theme.ink, 0.06) : "transparent"

        Rectangle {
            visible: row.current
            width: 3
            height: 16
            radius: 1.5
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.accentMark
        }
    }

    HoverHandler {
        property point last: Qt.point(-1, -1)
        onPointChanged: {
            const at = point.scenePosition;
            if (last.x >= 0 && (at.x !== last.x || at.y !== last.y))
                row.pointed();
            last = at;
        }
    }
}
