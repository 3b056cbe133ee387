import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit

/// One deck of the hub: pressed, it opens; its button starts a review.
T.ItemDelegate {
    id: line

    required property string place
    required property string name
    required property color color
    required property int cards
    required property int due
    required property int fresh
    required property real recall
    required property string exam
    required property bool examSoon
    property bool wide: true
    signal study()

    readonly property color tone: recall >= 0.9 ? Theme.good : recall >= 0.8 ? Theme.warn : Theme.bad

    implicitHeight: 43
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.description: qsTr("%1 cards, %2 due, %3 new").arg(cards).arg(due).arg(fresh)
    Accessible.onPressAction: clicked()

    background: Item {
        Rectangle {
            anchors { fill: parent; margins: 2; leftMargin: -8; rightMargin: -8 }
            radius: 8
            color: line.down ? Theme.pressTint : line.hovered ? Theme.hoverTint : Theme.alpha(Theme.ink, 0)
            Behavior on color { ColorAnimation { duration: Theme.hover; easing.type: Easing.OutQuad } }
            FocusRing { target: line; anchors.margins: -2; corner: 8 }
        }
    }
    contentItem: RowLayout {
        spacing: 0

        Swatch {
            color: line.color
            size: 24
            Layout.rightMargin: 14
        }
        Txt {
            text: line.name
            weight: 600
            Layout.fillWidth: true
            Layout.rightMargin: 12
        }
        Txt {
            visible: line.wide
            text: line.cards === 1 ? qsTr("1 card") : qsTr("%1 cards").arg(line.cards)
            size: 12
            color: Theme.ink2
            Layout.preferredWidth: 110
        }
        Txt {
            text: line.due === 0 ? "–" : line.due
            weight: line.due === 0 ? 400 : 700
            color: line.due === 0 ? Theme.ink3 : Theme.ink
            Layout.preferredWidth: 64
        }
        Txt {
            text: line.fresh === 0 ? "–" : line.fresh
            color: line.fresh === 0 ? Theme.ink3 : Theme.ink2
            Layout.preferredWidth: 64
        }
        RowLayout {
            spacing: 12
            Layout.fillWidth: false
            Layout.preferredWidth: line.wide ? 190 : 130
            Bar {
                value: Math.max(0, line.recall)
                fill: line.tone
                label: qsTr("Chance of recall now")
                Layout.preferredWidth: line.wide ? 110 : 56
            }
            Txt {
                text: line.recall < 0 ? "–" : qsTr("%1 %").arg(Math.round(line.recall * 100))
                weight: line.recall < 0 ? 400 : 600
                color: Theme.ink2
                Layout.fillWidth: true
            }
        }
        Txt {
            text: line.exam === "" ? qsTr("None set") : line.exam
            weight: line.examSoon ? 600 : 400
            color: line.examSoon ? Theme.warn : line.exam === "" ? Theme.ink3 : Theme.ink2
            Layout.preferredWidth: 100
        }
        PushButton {
            controlSize: 28
            enabled: line.due > 0
            text: qsTr("Study")
            Accessible.name: qsTr("Study %1").arg(line.name)
            onClicked: line.study()
        }
    }
}
