import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// The exams ahead, the nearest first.
Surface {
    id: card

    property var exams: []

    implicitHeight: column.implicitHeight + 32
    radius: 16
    elevation: 1

    ColumnLayout {
        id: column
        x: 24
        y: 20
        width: parent.width - 48
        spacing: 0

        Txt {
            Layout.bottomMargin: 8
            text: qsTr("Exams")
            size: 15
            weight: 600
            Accessible.role: Accessible.Heading
        }
        Repeater {
            model: card.exams
            delegate: ColumnLayout {
                id: exam
                required property var modelData
                Layout.fillWidth: true
                spacing: 0
                Divider { Layout.fillWidth: true }
                RowLayout {
                    Layout.fillWidth: true
                    Layout.preferredHeight: 60
                    spacing: 12
                    Swatch {
                        size: 18
                        color: exam.modelData.color === "" ? Theme.edge : exam.modelData.color
                    }
                    ColumnLayout {
                        Layout.fillWidth: true
                        spacing: 2
                        Txt {
                            Layout.fillWidth: true
                            text: exam.modelData.title
                            weight: 600
                        }
                        Txt {
                            Layout.fillWidth: true
                            text: qsTr("%1 · %2").arg(exam.modelData.when).arg(exam.modelData.notebook)
                            size: 12
                            color: Theme.ink3
                        }
                    }
                    Txt {
                        text: exam.modelData.ahead
                        weight: 600
                    }
                }
            }
        }
    }
}
