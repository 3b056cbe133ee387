import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Today
import Tessary.Desk

/// What a day begins with: what is due, where one left off, and what is ahead.
FocusScope {
    id: screen

    required property Desk desk
    signal review(string notebook)
    signal openPage(string place, string id)
    signal openShelf()
    signal makeWelcome()

    readonly property bool wide: width >= 860

    TodayModel {
        id: today
        desk: screen.desk
    }

    Flickable {
        id: flick
        anchors { fill: parent; topMargin: 8; bottomMargin: 8; rightMargin: 4 }
        contentHeight: all.implicitHeight + 48
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: Scrollbar {}

        ColumnLayout {
            id: all
            x: Math.max(32, (flick.width - 1120) / 2)
            y: 20
            width: flick.width - 2 * x
            spacing: 20
            opacity: today.ready ? 1 : 0
            Behavior on opacity { NumberAnimation { duration: Theme.select } }

            RowLayout {
                Layout.fillWidth: true
                spacing: 16
                PlimBadge {
                    desk: screen.desk
                    size: 104
                    picture: true
                    reaction: today.reaction
                    Layout.leftMargin: -12
                    Layout.topMargin: -12
                    Layout.bottomMargin: -12
                }
                ColumnLayout {
                    spacing: 2
                    Txt {
                        Layout.fillWidth: true
                        text: today.headline
                        size: 32
                        weight: 700
                        Accessible.role: Accessible.Heading
                    }
                    Txt {
                        Layout.fillWidth: true
                        text: qsTr("%1 · %2").arg(today.date).arg(today.line)
                        size: 15
                        color: Theme.ink2
                        wrap: true
                    }
                }
            }

            GridLayout {
                Layout.fillWidth: true
                columns: screen.wide ? 2 : 1
                columnSpacing: 16
                rowSpacing: 16

                ColumnLayout {
                    Layout.fillWidth: true
                    Layout.alignment: Qt.AlignTop
                    spacing: 16
                    DueCard {
                        Layout.fillWidth: true
                        today: today
                        onReview: notebook => screen.review(notebook)
                        onWrite: screen.openShelf()
                        onMakeWelcome: screen.makeWelcome()
                    }
                    PageListCard {
                        Layout.fillWidth: true
                        visible: today.weakest.length > 0
                        title: qsTr("Weakest pages")
                        detail: qsTr("Chance you remember today")
                        pages: today.weakest
                        onOpen: (place, id) => screen.openPage(place, id)
                    }
                    PageListCard {
                        Layout.fillWidth: true
                        visible: today.recent.length > 0
                        title: qsTr("Go on writing")
                        pages: today.recent
                        onOpen: (place, id) => screen.openPage(place, id)
                    }
                }
                ColumnLayout {
                    Layout.fillWidth: true
                    Layout.maximumWidth: screen.wide ? 344 : -1
                    Layout.preferredWidth: screen.wide ? 344 : -1
                    Layout.minimumWidth: screen.wide ? 300 : 0
                    Layout.alignment: Qt.AlignTop
                    spacing: 16
                    ExamCard {
                        Layout.fillWidth: true
                        visible: today.exams.length > 0
                        exams: today.exams
                    }
                    StreakCard {
                        Layout.fillWidth: true
                        today: today
                    }
                }
            }
        }
    }
}
