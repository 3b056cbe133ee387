import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Today

/// The cards that wait, by notebook, and the way to them.
Surface {
    id: card

    required property TodayModel today
    signal review(string notebook)
    signal write()
    signal makeWelcome()

    implicitHeight: column.implicitHeight + 40
    radius: 16
    elevation: 1

    ColumnLayout {
        id: column
        x: 24
        y: 20
        width: parent.width - 48
        spacing: 12

        Txt {
            text: qsTr("Due now")
            size: 15
            weight: 600
            Accessible.role: Accessible.Heading
        }

        RowLayout {
            visible: card.today.due > 0
            spacing: 16
            Numeral {
                text: Number(card.today.due).toLocaleString(Qt.locale(), "f", 0)
                size: 56
                weight: 700
                Accessible.name: card.today.due === 1 ? qsTr("1 card is due") : qsTr("%1 cards are due").arg(card.today.due)
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 0
                Txt {
                    Layout.fillWidth: true
                    text: card.today.due === 1 ? qsTr("card") : qsTr("cards")
                    size: 15
                    weight: 600
                }
                Txt {
                    Layout.fillWidth: true
                    visible: text !== ""
                    text: card.today.dueTime
                    color: Theme.ink2
                }
            }
            PushButton {
                kind: "primary"
                controlSize: 44
                text: qsTr("Start review")
                keyText: "Ctrl R"
                onClicked: card.review("")
            }
        }

        Item {
            visible: card.today.due > 0
            Layout.fillWidth: true
            implicitHeight: 8
            Accessible.ignored: true
            RowLayout {
                anchors.fill: parent
                spacing: 3
                Repeater {
                    model: card.today.decks
                    delegate: Rectangle {
                        required property var modelData
                        Layout.fillWidth: true
                        Layout.minimumWidth: 8
                        // The row gives out its width in these shares.
                        Layout.preferredWidth: 10000 * modelData.due / Math.max(1, card.today.due)
                        implicitHeight: 8
                        radius: 4
                        color: modelData.color === "" ? Theme.edge : modelData.color
                        border.width: Theme.contrast(color, Theme.raised) < 3 ? 1 : 0
                        border.color: Theme.edge
                    }
                }
            }
        }
        Flow {
            visible: card.today.due > 0
            Layout.fillWidth: true
            Layout.leftMargin: -10
            spacing: 4
            Repeater {
                model: card.today.decks
                delegate: PushButton {
                    required property var modelData
                    kind: "ghost"
                    controlSize: 28
                    text: qsTr("%1 · %2").arg(modelData.name).arg(modelData.due)
                    Accessible.name: qsTr("Review %1, %2 due").arg(modelData.name).arg(modelData.due)
                    onClicked: card.review(modelData.notebookId)
                }
            }
        }

        RowLayout {
            visible: card.today.due === 0
            spacing: 16
            Txt {
                Layout.fillWidth: true
                text: card.today.hasCards ? qsTr("Nothing is due. Cards come back just before you would forget them.")
                                          : qsTr("You have no cards yet. They are made on a page, from what you wrote.")
                size: 15
                color: Theme.ink2
                wrap: true
            }
            PushButton {
                visible: !card.today.hasCards && card.today.recent.length === 0
                text: qsTr("Show me around")
                onClicked: card.makeWelcome()
            }
            PushButton {
                text: qsTr("Open the shelf")
                onClicked: card.write()
            }
        }
    }
}
