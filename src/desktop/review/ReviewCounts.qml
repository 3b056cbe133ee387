import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// How many cards of each sort are still to come.
RowLayout {
    id: counts

    required property ReviewModel review

    spacing: 16

    component Count: RowLayout {
        id: count
        property color tone
        property string text
        spacing: 6
        Rectangle {
            implicitWidth: 8
            implicitHeight: 8
            radius: 4
            color: count.tone
        }
        Txt {
            text: count.text
            size: 12
            weight: 500
            color: Theme.ink2
        }
    }
    Count {
        tone: Theme.info
        text: qsTr("New %1").arg(counts.review.newCount)
    }
    Count {
        tone: Theme.warn
        text: qsTr("Learning %1").arg(counts.review.learningCount)
    }
    Count {
        tone: Theme.good
        text: qsTr("Review %1").arg(counts.review.reviewCount)
    }
}
