import QtQuick
import Tessary.Kit
import Tessary.Review

/// The back of a card: the answer under the question, or the sentence with its terms.
Column {
    id: answer

    required property ReviewModel review
    property bool low: false
    readonly property bool cloze: review.card.kind === "cloze"

    width: parent?.width ?? 0
    spacing: low ? 14 : 24
    topPadding: 4
    bottomPadding: 4

    CardText {
        visible: !answer.cloze
        x: Math.round((parent.width - width) / 2)
        width: Math.min(parent.width - 16, 480)
        plain: answer.review.card.front
        largest: 18
        color: Theme.ink2
    }
    Divider {
        visible: !answer.cloze
        width: parent.width
    }
    GradeLine {
        visible: answer.review.grade.verdict !== ""
        grade: answer.review.grade
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, 520)
    }
    CardText {
        x: Math.round((parent.width - width) / 2)
        width: Math.min(parent.width - 16, 500)
        plain: answer.review.card.back
        rich: answer.review.card.backRich
        filled: true
        largest: 24
    }
    Txt {
        visible: text !== ""
        x: Math.round((parent.width - width) / 2)
        width: Math.min(parent.width - 16, 520)
        text: answer.review.card.explanation
        size: 15
        wrap: true
        color: Theme.ink2
        horizontalAlignment: Text.AlignHCenter
    }
}
