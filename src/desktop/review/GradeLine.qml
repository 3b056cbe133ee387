import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// How an answer was judged, with the answer.
Rectangle {
    id: line

    required property gradeNote grade

    readonly property color tone: grade.verdict === "correct" ? Theme.good : grade.verdict === "wrong" ? Theme.bad
                                 : grade.verdict === "partial" ? Theme.warn : Theme.info
    readonly property string picture: grade.verdict === "correct" ? "check" : grade.verdict === "wrong" ? "close"
                                    : "alert"

    implicitHeight: column.implicitHeight + 20
    radius: 10
    color: Theme.soft(tone)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: grade.feedback

    RowLayout {
        anchors.fill: parent
        anchors { leftMargin: 12; rightMargin: 16; topMargin: 10; bottomMargin: 10 }
        spacing: 12

        Icon {
            name: line.picture
            color: line.tone
            Layout.alignment: Qt.AlignTop
        }
        ColumnLayout {
            id: column
            spacing: 2
            Layout.alignment: Qt.AlignVCenter
            Txt {
                text: line.grade.feedback
                weight: 600
                wrap: true
                color: line.tone
                Layout.fillWidth: true
            }
            Txt {
                visible: text !== ""
                text: line.grade.detail
                wrap: true
                color: Theme.ink2
                Layout.fillWidth: true
            }
            Txt {
                visible: line.grade.typed !== ""
                text: qsTr("You wrote: %1").arg(line.grade.typed)
                wrap: true
                color: Theme.ink2
                Layout.fillWidth: true
            }
        }
    }
}
