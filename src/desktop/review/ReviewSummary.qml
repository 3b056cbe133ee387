import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// What came of a sitting.
ReviewPane {
    id: summary

    required property ReviewModel review
    signal finished()

    readonly property reviewOutcome outcome: review.outcome
    readonly property bool rated: outcome.ratings > 0
    readonly property Item focusTarget: done

    component Figure: ColumnLayout {
        id: figure
        property string value
        property string label
        spacing: 0
        Txt {
            text: figure.value
            size: 18
            weight: 600
        }
        Txt {
            text: figure.label
            size: 12
            color: Theme.ink3
        }
    }

    Item {
        implicitHeight: sheet.height + 64
        width: parent.width

        Surface {
            id: sheet
            anchors.centerIn: parent
            width: Math.min(720, parent.width - 64)
            height: column.implicitHeight + 64
            radius: 16
            elevation: 3
            fill: Theme.paper

            ColumnLayout {
                id: column
                anchors { left: parent.left; right: parent.right; top: parent.top; margins: 32 }
                spacing: 24

                RowLayout {
                    spacing: 32
                    Ring {
                        visible: summary.rated
                        value: summary.outcome.remembered
                        size: 128
                        thickness: 12
                        mark: Theme.good
                        label: qsTr("Remembered")
                        Column {
                            anchors.centerIn: parent
                            Txt {
                                anchors.horizontalCenter: parent.horizontalCenter
                                text: qsTr("%1 %").arg(Math.round(summary.outcome.remembered * 100))
                                size: 24
                                weight: 700
                            }
                            Txt {
                                anchors.horizontalCenter: parent.horizontalCenter
                                text: qsTr("remembered")
                                size: 12
                                color: Theme.ink3
                            }
                        }
                    }
                    ColumnLayout {
                        spacing: 4
                        Txt {
                            text: qsTr("That's all for now")
                            size: 24
                            weight: 700
                            Layout.fillWidth: true
                            Accessible.role: Accessible.Heading
                        }
                        Txt {
                            visible: text !== ""
                            text: summary.rated ? summary.outcome.next
                                : qsTr("No card was rated. %1").arg(summary.outcome.next)
                            size: 15
                            wrap: true
                            color: Theme.ink2
                            Layout.fillWidth: true
                        }
                        RowLayout {
                            visible: summary.rated
                            spacing: 32
                            Layout.topMargin: 16
                            Figure {
                                value: summary.outcome.cards
                                label: qsTr("cards")
                            }
                            Figure {
                                value: summary.outcome.ratings
                                label: qsTr("answers")
                            }
                            Figure {
                                value: summary.outcome.time
                                label: qsTr("in all")
                            }
                            Figure {
                                value: summary.outcome.perCard
                                label: qsTr("per card")
                            }
                        }
                    }
                    PlimBadge {
                        desk: summary.review.desk
                        picture: true
                        reaction: summary.rated ? "win" : "idle"
                        size: 112
                        Layout.alignment: Qt.AlignTop
                    }
                }
                Divider {
                    visible: summary.rated
                    Layout.fillWidth: true
                }
                RatingChart {
                    visible: summary.rated
                    counts: summary.outcome.counts
                    Layout.fillWidth: true
                }
                RowLayout {
                    spacing: 12
                    Item { Layout.fillWidth: true }
                    PushButton {
                        visible: summary.outcome.moreWaiting
                        text: qsTr("Study more")
                        iconName: "study"
                        onClicked: summary.review.start("")
                    }
                    PushButton {
                        id: done
                        kind: "primary"
                        text: qsTr("Done")
                        keyText: qsTr("Enter")
                        onClicked: summary.finished()
                    }
                }
            }
        }
    }
}
