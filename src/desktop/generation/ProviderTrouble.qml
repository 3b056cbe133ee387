import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Generation

/// Why the provider can't write cards now, and what to do about it.
Rectangle {
    id: trouble

    required property GenerationChoices choices
    signal openSettings()

    implicitHeight: column.implicitHeight + 24
    radius: 10
    color: Theme.soft(Theme.warn)

    ColumnLayout {
        id: column
        anchors { fill: parent; margins: 12 }
        spacing: 8
        RowLayout {
            spacing: 8
            Icon {
                name: "alert"
                size: 16
                color: Theme.warn
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: 2
            }
            Txt {
                text: trouble.choices.providerProblem
                weight: 500
                wrap: true
                Layout.fillWidth: true
                Accessible.role: Accessible.AlertMessage
            }
        }
        RowLayout {
            spacing: 8
            Layout.leftMargin: 24
            PushButton {
                controlSize: 28
                text: qsTr("Open settings")
                onClicked: trouble.openSettings()
            }
            PushButton {
                kind: "ghost"
                controlSize: 28
                iconName: "refresh"
                text: qsTr("Check again")
                onClicked: trouble.choices.lookAtProvider()
            }
        }
    }
}
