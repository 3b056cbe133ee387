import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Review

/// A rating with when it brings the card back.
T.AbstractButton {
    id: button

    required property ratingChoice rating
    required property color tone
    property bool suggested: false

    text: rating.name
    implicitHeight: 72
    implicitWidth: 161
    leftPadding: 16
    rightPadding: 12
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: rating.interval === "" ? text : qsTr("%1, back in %2").arg(text).arg(rating.interval)
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) button.clicked(); }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) button.clicked(); }

    background: Surface {
        radius: 12
        elevation: button.suggested ? 2 : 1
        fill: button.suggested ? Theme.soft(button.tone) : Theme.raised
        stroke: button.suggested ? button.tone : Theme.edge
        strokeWidth: button.suggested ? 2 : 1

        Rectangle {
            anchors.fill: parent
            radius: 12
            color: button.down ? Theme.pressTint : button.hovered ? Theme.hoverTint : "transparent"
        }
        FocusRing { target: button; corner: 12 }
    }
    contentItem: RowLayout {
        spacing: 8

        ColumnLayout {
            spacing: button.height < 72 ? 0 : 4
            RowLayout {
                spacing: 10
                Rectangle {
                    implicitWidth: 10
                    implicitHeight: 10
                    radius: 5
                    color: button.tone
                }
                Txt {
                    text: button.text
                    size: 15
                    weight: 600
                    color: button.tone
                    Layout.fillWidth: true
                    Accessible.ignored: true
                }
            }
            Txt {
                visible: text !== ""
                text: button.rating.interval
                weight: 500
                color: Theme.ink2
                Layout.fillWidth: true
                Layout.leftMargin: 20
                Accessible.ignored: true
            }
        }
        Kbd { text: button.rating.number }
    }
}
