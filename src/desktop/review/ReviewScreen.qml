import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Desk
import Tessary.Review

/// A sitting: one card at a time, and at the end what came of it.
FocusScope {
    id: screen

    required property Desk desk
    /// Its cards with those of its subpages; all due cards when empty.
    property string page: ""
    /// A notebook's identity or "loose", when no page is meant.
    property string place: ""
    signal closed()
    signal openPage(string page)

    /// Whether the focus is led by keys, and so has to be seen.
    property bool usesKeys: true
    readonly property Item focusedItem: Window.activeFocusItem
    readonly property var focusIsSeen: focusedItem?.visualFocus
    readonly property bool low: height < 700
    readonly property bool over: sitting.state === "done" || sitting.state === "empty"
    readonly property Item focusTarget: sitting.state === "answer" ? ratings.focusTarget
                                      : sitting.state === "done" ? summary.focusTarget
                                      : sitting.state === "empty" ? empty.nextItemInFocusChain(true) : card.focusTarget

    function settle() {
        if (editor.visible)
            return;
        screen.focusTarget?.forceActiveFocus(screen.usesKeys ? Qt.TabFocusReason : Qt.OtherFocusReason);
    }
    function close() {
        sitting.leave();
        screen.closed();
    }

    Component.onCompleted: sitting.start(page, place)
    onPageChanged: if (sitting.state !== "") sitting.start(page, place)
    onFocusIsSeenChanged: if (focusedItem?.activeFocus && focusIsSeen !== undefined) usesKeys = focusIsSeen
    onActiveFocusChanged: if (activeFocus) Qt.callLater(screen.settle)

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Review")

    Keys.onUpPressed: card.scroll(-48)
    Keys.onDownPressed: card.scroll(48)
    Keys.onPressed: event => {
        screen.usesKeys = true;
        event.accepted = !event.isAutoRepeat && sitting.press(event.key, event.modifiers);
    }
    ReviewModel {
        id: sitting
        desk: screen.desk
        onDealt: Qt.callLater(screen.settle)
        onReacted: reaction => companion.play(reaction)
        onTurned: Qt.callLater(screen.settle)
        onNoticed: toasts.show(sitting.notice, sitting.canUndo ? qsTr("Undo") : "", sitting.undo)
        onEditAsked: editor.openFor(sitting.draft())
        onPageAsked: page => screen.openPage(page)
        onLeaveAsked: screen.close()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ReviewTopBar {
            Layout.fillWidth: true
            Layout.preferredHeight: screen.low ? 56 : 68
            review: sitting
            onEnded: screen.close()
            onStepped: Qt.callLater(screen.settle)
        }

        Item {
            visible: !screen.over
            Layout.fillHeight: true
        }
        ReviewCard {
            id: card
            visible: !screen.over
            review: sitting
            low: screen.low
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredHeight: 560
            Layout.maximumHeight: 560
            Layout.maximumWidth: Math.max(680, Math.min(860, screen.width * 0.5))
            Layout.leftMargin: 32
            Layout.rightMargin: 32
            Layout.topMargin: screen.low ? 4 : 28
            Layout.bottomMargin: screen.low ? 24 : 32
            Layout.alignment: Qt.AlignHCenter
        }
        ColumnLayout {
            visible: !screen.over
            spacing: screen.low ? 12 : 24
            Layout.fillWidth: true
            Layout.maximumWidth: card.width
            Layout.minimumHeight: screen.low ? 88 : 116
            Layout.maximumHeight: Layout.minimumHeight
            Layout.alignment: Qt.AlignHCenter

            RatingRow {
                id: ratings
                visible: sitting.state === "answer"
                review: sitting
                low: screen.low
                Layout.fillWidth: true
            }
            ReviewHints {
                review: sitting
                Layout.alignment: Qt.AlignHCenter | Qt.AlignTop
            }
            Item { Layout.fillHeight: true }
        }
        Item {
            visible: !screen.over
            Layout.fillHeight: true
        }

        ReviewSummary {
            id: summary
            visible: sitting.state === "done"
            review: sitting
            Layout.fillWidth: true
            Layout.fillHeight: true
            onFinished: screen.close()
        }
        Item {
            visible: sitting.state === "empty"
            Layout.fillWidth: true
            Layout.fillHeight: true
            EmptyState {
                id: empty
                anchors.centerIn: parent
                text: sitting.emptyText
                actionText: qsTr("Back")
                onAction: screen.close()
            }
        }

        ReviewCounts {
            review: sitting
            visible: !screen.over
            Layout.leftMargin: 32
            Layout.preferredHeight: screen.low ? 40 : 64
        }
    }

    PlimBadge {
        id: companion
        desk: screen.desk
        visible: !screen.over && screen.desk.companion
        base: "study"
        reaction: "study"
        covered: editor.visible
        size: screen.low ? 56 : 112
        anchors { right: parent.right; bottom: parent.bottom; margins: screen.low ? 20 : 24 }
    }

    EditCardSheet {
        id: editor
        review: sitting
        onClosed: Qt.callLater(screen.settle)
    }
    ToastHost {
        id: toasts
        anchors.fill: parent
    }
}
