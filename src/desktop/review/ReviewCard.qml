import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// The card on its deck. It turns when the answer comes, and the next one rises in its place.
Item {
    id: stage

    required property ReviewModel review
    /// Whether the back is up; while the card turns, the change is at half time.
    property bool back: false
    /// There is little room.
    property bool low: false
    readonly property bool choosing: review.card.options.length > 0
    readonly property Item focusTarget: review.state === "typing" ? question.focusTarget : show

    function scroll(by: real) { pane.scroll(by); }

    implicitHeight: 460

    Connections {
        target: stage.review
        function onTurned() { stage.choosing ? stage.back = true : turning.restart(); }
        function onDealt() {
            turning.stop();
            squeeze.xScale = 1;
            stage.back = false;
            pane.contentY = 0;
            rising.restart();
        }
    }
    SequentialAnimation {
        id: turning
        NumberAnimation {
            target: squeeze
            property: "xScale"
            to: 0
            duration: Theme.turn / 2
            easing.type: Easing.InCubic
        }
        PropertyAction { target: stage; property: "back"; value: true }
        PropertyAction { target: pane; property: "contentY"; value: 0 }
        NumberAnimation {
            target: squeeze
            property: "xScale"
            to: 1
            duration: Theme.turn / 2
            easing.type: Easing.OutCubic
        }
    }
    ParallelAnimation {
        id: rising
        NumberAnimation {
            target: rise
            property: "y"
            from: Theme.reduceMotion ? 0 : 10
            to: 0
            duration: Theme.turn
            easing.type: Easing.OutCubic
        }
        NumberAnimation {
            target: sheet
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.turn
            easing.type: Easing.OutCubic
        }
    }

    Surface {
        visible: stage.review.total - stage.review.done > 1
        anchors.fill: parent
        anchors { leftMargin: 16; rightMargin: 16; topMargin: 14; bottomMargin: -14 }
        radius: 16
        elevation: 1
        fill: Theme.mix(Theme.paper, Theme.desk, 0.6)
        opacity: 0.8
    }

    Surface {
        id: sheet
        anchors.fill: parent
        radius: 16
        elevation: 3
        transform: [
            Scale { id: squeeze; origin.x: sheet.width / 2 },
            Translate { id: rise }
        ]
        Accessible.role: Accessible.Grouping
        Accessible.name: stage.back && !stage.choosing ? stage.review.card.back : stage.review.card.front

        ColumnLayout {
            anchors.fill: parent
            anchors.margins: stage.low ? 16 : 24
            spacing: stage.low ? 8 : 12

            CardHeader {
                review: stage.review
                Layout.fillWidth: true
            }
            ReviewPane {
                id: pane
                gutter: stage.low ? 14 : 20
                Layout.fillWidth: true
                Layout.rightMargin: -gutter
                Layout.fillHeight: true
                CardQuestion {
                    id: question
                    visible: !stage.back || stage.choosing
                    review: stage.review
                    answered: stage.back
                    low: stage.low
                }
                CardAnswer {
                    visible: stage.back && !stage.choosing
                    review: stage.review
                    low: stage.low
                }
            }
            RowLayout {
                spacing: 12
                Layout.alignment: Qt.AlignHCenter
                Layout.minimumHeight: stage.low ? 36 : 44
                Layout.maximumHeight: Layout.minimumHeight

                PushButton {
                    visible: stage.review.state === "typing"
                    kind: "primary"
                    controlSize: stage.low ? 36 : 44
                    text: qsTr("Check answer")
                    keyText: qsTr("Enter")
                    onClicked: question.submit()
                }
                PushButton {
                    id: show
                    visible: !stage.back
                    kind: stage.review.state === "question" && !stage.choosing ? "primary" : "ghost"
                    controlSize: stage.low ? 36 : 44
                    text: qsTr("Show answer")
                    keyText: stage.review.state === "question" ? qsTr("Space") : ""
                    Accessible.description: stage.review.card.front
                    onClicked: stage.review.reveal()
                }
                SourceButton {
                    visible: stage.back
                    review: stage.review
                }
            }
        }
    }
}
