import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// The four ratings.
RowLayout {
    id: row

    required property ReviewModel review
    property bool low: false
    readonly property Item focusTarget: buttons.count === 4 ? buttons.itemAt(review.suggested - 1) : null

    spacing: 12

    Repeater {
        id: buttons
        model: row.review.ratings
        delegate: RatingButton {
            required property int index
            required property var modelData
            rating: modelData
            tone: [Theme.bad, Theme.warn, Theme.good, Theme.info][index]
            implicitHeight: row.low ? 56 : 72
            suggested: index + 1 === row.review.suggested
            onClicked: row.review.rate(index + 1)
            Layout.fillWidth: true
            Layout.preferredWidth: 1
        }
    }
}
