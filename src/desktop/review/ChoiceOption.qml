import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Review

/// An option of a multiple choice; afterwards whether it was right.
T.AbstractButton {
    id: option

    required property ReviewModel review
    required property int index
    required property string modelData
    property bool answered: false
    property bool low: false

    readonly property bool isRight: answered && index === review.card.correctIndex
    readonly property bool isWrong: answered && !isRight && index === review.chosen
    readonly property color mark: isRight ? Theme.good : isWrong ? Theme.bad : Theme.edge

    text: modelData
    implicitHeight: Math.max(low ? 40 : 48, implicitContentHeight + (low ? 12 : 20))
    leftPadding: 12
    rightPadding: 16
    focusPolicy: answered ? Qt.NoFocus : Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: isRight ? qsTr("The right answer") : isWrong ? qsTr("Your answer, which is wrong") : ""
    Accessible.onPressAction: option.clicked()
    Keys.onReturnPressed: option.clicked()
    Keys.onEnterPressed: option.clicked()
    onClicked: review.chooseOption(index)

    background: Rectangle {
        radius: 10
        color: option.isRight || option.isWrong ? Theme.soft(option.mark) : Theme.raised
        border.width: option.isRight || option.isWrong ? 2 : 1
        border.color: option.mark

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            visible: !option.answered
            color: option.down ? Theme.pressTint : option.hovered ? Theme.hoverTint : "transparent"
        }
        FocusRing { target: option; corner: 10 }
    }
    contentItem: RowLayout {
        spacing: 12
        opacity: option.answered && !option.isRight && !option.isWrong ? 0.7 : 1

        Kbd {
            text: option.index + 1
            implicitWidth: 28
            implicitHeight: 28
        }
        Txt {
            text: option.text
            size: 15
            weight: 500
            wrap: true
            Layout.fillWidth: true
            Layout.topMargin: 3
            Accessible.ignored: true
        }
        Icon {
            visible: option.isRight || option.isWrong
            name: option.isRight ? "check" : "close"
            color: option.mark
        }
    }
}
