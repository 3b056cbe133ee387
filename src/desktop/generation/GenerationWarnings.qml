import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// What was left out of the cards.
Rectangle {
    id: warnings

    property var lines: []

    implicitHeight: column.implicitHeight + 24
    radius: 10
    color: Theme.soft(Theme.warn)

    ColumnLayout {
        id: column
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
        spacing: 4
        Repeater {
            model: warnings.lines
            delegate: RowLayout {
                id: line
                required property string modelData
                spacing: 8
                Icon {
                    name: "alert"
                    size: 16
                    color: Theme.warn
                    Layout.alignment: Qt.AlignTop
                    Layout.topMargin: 2
                }
                Txt {
                    text: line.modelData
                    wrap: true
                    Layout.fillWidth: true
                }
            }
        }
    }
}
