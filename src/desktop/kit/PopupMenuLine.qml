import QtQuick
import QtQuick.Templates as T

/// Between groups of a menu.
T.MenuSeparator {
    implicitHeight: 9
    implicitWidth: 24
    contentItem: Item {
        Divider {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
        }
    }
}
