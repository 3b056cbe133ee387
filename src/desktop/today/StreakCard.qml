import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Today

/// The last seven days, and how many in a row had a review.
Surface {
    id: card

    required property TodayModel today

    implicitHeight: column.implicitHeight + 44
    radius: 16
    elevation: 1

    ColumnLayout {
        id: column
        x: 24
        y: 20
        width: parent.width - 48
        spacing: 16

        RowLayout {
            spacing: 8
            Icon {
                name: "flame"
                color: Theme.warn
            }
            Txt {
                Layout.fillWidth: true
                text: card.today.streakTitle
                size: 15
                weight: 600
                Accessible.role: Accessible.Heading
            }
            Txt {
                text: card.today.streakDetail
                size: 12
                color: Theme.ink3
            }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 0
            Repeater {
                model: card.today.week
                delegate: ColumnLayout {
                    id: day
                    required property var modelData
                    readonly property bool studied: modelData.reviews > 0
                    Layout.fillWidth: true
                    spacing: 6
                    Accessible.role: Accessible.StaticText
                    Accessible.name: modelData.reviews === 1 ? qsTr("%1: 1 review").arg(modelData.name)
                                                             : qsTr("%1: %2 reviews").arg(modelData.name)
                                                                                     .arg(modelData.reviews)
                    Rectangle {
                        Layout.alignment: Qt.AlignHCenter
                        implicitWidth: 32
                        implicitHeight: 32
                        radius: 16
                        color: day.studied ? Theme.accentFill : "transparent"
                        border.width: day.studied ? 1 : day.modelData.today ? 2 : 1
                        border.color: day.studied ? Theme.accentEdge : day.modelData.today ? Theme.edge : Theme.line
                        Icon {
                            anchors.centerIn: parent
                            visible: day.studied
                            name: "check"
                            size: 18
                            color: Theme.accentInk
                        }
                    }
                    Txt {
                        Layout.fillWidth: true
                        horizontalAlignment: Text.AlignHCenter
                        text: day.modelData.letter
                        size: 12
                        weight: day.modelData.today ? 700 : 400
                        color: day.modelData.today ? Theme.ink : Theme.ink3
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
