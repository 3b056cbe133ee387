import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit

/// Looks like a field, and opens the search.
T.AbstractButton {
    id: row

    property bool folded: false

    text: qsTr("Search")
    implicitHeight: folded ? 40 : 32
    Layout.fillWidth: true
    leftPadding: folded ? 0 : 10
    rightPadding: folded ? 0 : 8
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        radius: 8
        color: row.down ? Theme.pressTint : row.hovered ? Theme.hoverTint
             : row.folded ? "transparent" : Theme.alpha(Theme.ink, 0.035)
        border.width: row.folded ? 0 : 1
        border.color: Theme.line
        FocusRing { target: row }
    }
    contentItem: Item {
        Icon {
            name: "search"
            size: row.folded ? 20 : 16
            x: row.folded ? (parent.width - width) / 2 : 2
            anchors.verticalCenter: parent.verticalCenter
        }
        Txt {
            visible: !row.folded
            x: 30
            width: parent.width - x - key.width - 6
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            weight: 500
            color: Theme.ink2
            Accessible.ignored: true
        }
        Kbd {
            id: key
            visible: !row.folded
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: "Ctrl Shift F"
        }
    }
}
