import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// A chart on its card: what it is of at the left, a remark or a control at the right.
Surface {
    id: card

    property string title
    property string note
    property alias aside: corner.data
    property alias chart: body.data
    /// Shown in place of the chart.
    property string emptyText
    property bool noteBelow: false

    implicitHeight: column.implicitHeight + 36

    ColumnLayout {
        id: column
        anchors { fill: parent; leftMargin: 20; rightMargin: 20; topMargin: 12; bottomMargin: 16 }
        spacing: 8

        RowLayout {
            spacing: 12
            Layout.fillWidth: true
            Layout.preferredHeight: 28
            Txt {
                text: card.title
                size: 15
                weight: 600
                Accessible.role: Accessible.Heading
            }
            Txt {
                visible: !card.noteBelow
                text: card.note
                color: Theme.ink2
                Layout.fillWidth: true
            }
            Item {
                visible: card.noteBelow
                Layout.fillWidth: true
            }
            RowLayout {
                id: corner
                spacing: 6
            }
        }
        Txt {
            visible: card.noteBelow
            text: card.note
            size: 12
            color: Theme.ink2
            Layout.fillWidth: true
            Layout.topMargin: -8
        }
        Item {
            id: body
            visible: card.emptyText === ""
            implicitHeight: children.length > 0 ? children[0].implicitHeight : 0
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        Txt {
            visible: card.emptyText !== ""
            text: card.emptyText
            wrap: true
            color: Theme.ink2
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: 96
            Layout.leftMargin: 24
            Layout.rightMargin: 24
        }
    }
}
