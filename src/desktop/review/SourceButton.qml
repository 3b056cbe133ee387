import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Review

/// The page a card comes from; opens it.
T.AbstractButton {
    id: source

    required property ReviewModel review

    text: review.card.source
    implicitWidth: Math.min(leftPadding + implicitContentWidth + rightPadding, 420)
    implicitHeight: 32
    leftPadding: 10
    rightPadding: 10
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Link
    Accessible.name: qsTr("Open %1").arg(text)
    Accessible.onPressAction: source.clicked()
    Keys.onReturnPressed: source.clicked()
    Keys.onEnterPressed: source.clicked()
    onClicked: review.pageAsked(review.card.pageId)

    background: Rectangle {
        radius: 8
        color: Theme.sunken
        border.width: 1
        border.color: Theme.line

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: source.down ? Theme.pressTint : source.hovered ? Theme.hoverTint : "transparent"
        }
        FocusRing { target: source; corner: 8 }
    }
    contentItem: RowLayout {
        spacing: 8
        Icon {
            name: "page"
            size: 16
        }
        Txt {
            text: source.text
            weight: 500
            color: Theme.ink2
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Icon {
            name: "right"
            size: 12
            color: Theme.ink3
        }
    }
}
