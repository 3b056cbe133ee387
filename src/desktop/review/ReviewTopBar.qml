import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// The way out, what is reviewed, how far it is, and what else may be done with the card.
Item {
    id: bar

    required property ReviewModel review
    signal ended()
    /// The card is to have the focus again.
    signal stepped()

    readonly property bool onCard: review.card.kind !== ""
    readonly property real share: review.total > 0 ? review.done / review.total : 0

    RowLayout {
        anchors { left: parent.left; right: progress.left; verticalCenter: parent.verticalCenter }
        anchors { leftMargin: 20; rightMargin: 24 }
        spacing: 12

        IconButton {
            iconName: "close"
            label: qsTr("End the review")
            controlSize: 36
            onClicked: bar.ended()
        }
        ColumnLayout {
            spacing: 0
            Txt {
                text: bar.review.title
                weight: 600
                Layout.fillWidth: true
                Accessible.role: Accessible.Heading
            }
            Txt {
                visible: text !== ""
                text: bar.review.subtitle
                size: 12
                color: Theme.ink3
                Layout.fillWidth: true
            }
        }
    }

    RowLayout {
        id: progress
        visible: bar.review.total > 0
        anchors.centerIn: parent
        spacing: 16

        Rectangle {
            implicitWidth: Math.max(160, Math.min(400, bar.width * 0.31))
            implicitHeight: 6
            radius: 3
            color: Theme.line
            Accessible.role: Accessible.ProgressBar
            Accessible.name: qsTr("Progress")
            Accessible.description: count.text

            Rectangle {
                visible: bar.share > 0
                width: Math.max(height, parent.width * bar.share)
                height: parent.height
                radius: 3
                color: Theme.accent
                border.width: Theme.dark ? 0 : 1
                border.color: Theme.accentMark
                Behavior on width { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutQuint } }
            }
        }
        Numeral {
            id: count
            text: qsTr("%1 of %2").arg(bar.review.done).arg(bar.review.total)
            color: Theme.ink2
        }
    }

    RowLayout {
        anchors { right: parent.right; rightMargin: 24; verticalCenter: parent.verticalCenter }
        spacing: 4

        PushButton {
            kind: "ghost"
            iconName: "undo"
            text: qsTr("Undo")
            keyText: "U"
            enabled: bar.review.canUndo
            onClicked: bar.review.undo()
        }
        IconButton {
            id: more
            iconName: "more"
            label: qsTr("More")
            controlSize: 36
            onClicked: menu.popup(more, 0, more.height + 4)

            PopupMenu {
                id: menu
                onClosed: bar.stepped()
                PopupMenuItem {
                    text: qsTr("Type the answers")
                    checkable: true
                    checked: bar.review.typeAnswers
                    onTriggered: bar.review.typeAnswers = checked
                }
                PopupMenuLine {}
                PopupMenuItem {
                    text: qsTr("Edit card")
                    iconName: "pen"
                    keyText: "E"
                    enabled: bar.onCard
                    onTriggered: bar.review.editAsked()
                }
                PopupMenuItem {
                    text: bar.review.card.flagged ? qsTr("Remove the flag") : qsTr("Flag")
                    iconName: "flag"
                    keyText: "F"
                    enabled: bar.onCard
                    onTriggered: bar.review.toggleFlag()
                }
                PopupMenuItem {
                    text: qsTr("Open page")
                    iconName: "page"
                    keyText: "O"
                    enabled: bar.onCard
                    onTriggered: bar.review.pageAsked(bar.review.card.pageId)
                }
                PopupMenuItem {
                    text: qsTr("Suspend")
                    iconName: "pause"
                    keyText: "S"
                    enabled: bar.onCard
                    onTriggered: bar.review.suspend()
                }
            }
        }
    }
}
