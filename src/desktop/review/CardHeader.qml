import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// Where a card is from, what kind it is, and its flag.
RowLayout {
    id: header

    required property ReviewModel review

    spacing: 12

    Rectangle {
        visible: header.review.card.notebook !== ""
        implicitWidth: name.implicitWidth + 20
        implicitHeight: 24
        radius: 12
        color: "transparent"
        border.width: 1
        border.color: Theme.line
        Layout.maximumWidth: 280

        Txt {
            id: name
            anchors.fill: parent
            anchors { leftMargin: 10; rightMargin: 10 }
            verticalAlignment: Text.AlignVCenter
            text: header.review.card.notebook
            size: 12
            weight: 500
            color: Theme.ink2
            Accessible.name: header.review.card.place
        }
    }
    Txt {
        text: header.review.card.kindName
        size: 12
        weight: 500
        color: Theme.ink3
        Layout.fillWidth: true
    }
    IconButton {
        iconName: "flag"
        label: header.review.card.flagged ? qsTr("Remove the flag") : qsTr("Flag")
        tint: header.review.card.flagged ? Theme.warn : Theme.ink3
        onClicked: header.review.toggleFlag()
    }
}
