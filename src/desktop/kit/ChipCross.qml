import QtQuick
import QtQuick.Templates as T

/// Takes a chip away, by pointer; by keyboard the chip itself does.
T.AbstractButton {
    id: cross

    property color color: Theme.ink2

    implicitWidth: 20
    implicitHeight: 20
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.Button
    Accessible.onPressAction: cross.clicked()

    background: Rectangle {
        radius: 10
        color: cross.down ? Theme.pressTint : cross.hovered ? Theme.hoverTint : "transparent"
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: "close"
            size: 12
            color: cross.color
        }
    }
}
