import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Shelf

/// What is due, and the way to it; no taller than nothing when nothing is.
Item {
    id: strip

    required property ShelfModel shelf
    signal start()

    implicitHeight: visible ? 82 : 0
    visible: shelf.due > 0

    Surface {
        anchors { left: parent.left; right: parent.right; top: parent.top }
        anchors.leftMargin: 16
        anchors.rightMargin: 16
        height: 64

        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 16
            anchors.rightMargin: 16
            spacing: 16

            Rectangle {
                implicitWidth: Math.max(40, number.implicitWidth + 16)
                implicitHeight: 40
                radius: 10
                color: Theme.accentFill
                border.color: Theme.accentEdge
                Numeral {
                    id: number
                    anchors.centerIn: parent
                    text: Number(strip.shelf.due).toLocaleString(Qt.locale(), "f", 0)
                    size: 18
                    weight: 700
                    color: Theme.onAccent
                    Accessible.ignored: true
                }
            }
            ColumnLayout {
                spacing: 1
                Txt {
                    text: strip.shelf.dueTitle
                    size: 15
                    weight: 600
                    Layout.fillWidth: true
                }
                Txt {
                    text: strip.shelf.dueDetail
                    color: Theme.ink2
                    Layout.fillWidth: true
                }
            }
            PushButton {
                kind: "primary"
                text: qsTr("Start review")
                keyText: "Ctrl R"
                onClicked: strip.start()
            }
        }
    }
}
