import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// The front of a card with what there is to answer it: nothing, options, or fields. The options stay when the answer
/// is there, and show it.
Column {
    id: question

    required property ReviewModel review
    property bool answered: false
    property bool low: false

    readonly property bool choosing: review.card.options.length > 0
    readonly property bool typing: review.state === "typing" || review.state === "checking"
    readonly property Item focusTarget: fields.focusTarget

    function submit() { fields.submit(); }

    width: parent?.width ?? 0
    spacing: low ? 14 : choosing ? 16 : 24
    topPadding: 4
    bottomPadding: 4

    CardText {
        x: Math.round((parent.width - width) / 2)
        width: Math.min(parent.width - 16, 560)
        plain: question.review.card.front
        rich: question.review.card.frontRich
        largest: !question.choosing && !question.typing ? 32 : question.low ? 18 : 24
    }
    Column {
        visible: !question.choosing && !question.typing
        width: parent.width
        spacing: 18
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 24
            height: 2
            radius: 1
            color: Theme.accentMark
        }
        Txt {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Say the answer aloud before you turn the card.")
            color: Theme.ink3
        }
    }
    TypedAnswer {
        id: fields
        visible: question.typing
        review: question.review
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, 520)
    }
    ColumnLayout {
        visible: question.choosing
        width: parent.width
        spacing: question.low ? 6 : 8
        Repeater {
            model: question.review.card.options
            delegate: ChoiceOption {
                review: question.review
                answered: question.answered
                low: question.low
                Layout.fillWidth: true
            }
        }
    }
    Txt {
        visible: question.answered && text !== ""
        width: parent.width
        text: question.review.card.explanation
        size: 15
        wrap: true
        color: Theme.ink2
    }
}
