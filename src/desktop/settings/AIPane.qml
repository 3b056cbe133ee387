import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// Who writes cards and checks answers, and what each of them needs.
ColumnLayout {
    id: pane

    required property Desk desk

    spacing: 24

    AIEngineModel {
        id: engineModel
        desk: pane.desk
        Component.onCompleted: look()
    }

    ColumnLayout {
        spacing: 8
        Layout.fillWidth: true

        RowLayout {
            spacing: 8
            ColumnLayout {
                spacing: 0
                Txt {
                    text: qsTr("AI engine")
                    size: 15
                    weight: 600
                    Layout.fillWidth: true
                    Accessible.role: Accessible.Heading
                }
                Txt {
                    text: qsTr("It writes cards and summaries from your notes, and checks typed answers.")
                    color: Theme.ink2
                    wrap: true
                    Layout.fillWidth: true
                }
            }
            IconButton {
                iconName: "refresh"
                label: qsTr("Look again")
                onClicked: engineModel.look()
            }
        }
        Repeater {
            model: engineModel
            delegate: ProviderCard {
                desk: pane.desk
                engine: engineModel
                Layout.fillWidth: true
            }
        }
    }
    SettingGroup {
        title: qsTr("Pace")
        SettingToggle {
            desk: pane.desk
            key: "flashcards.gentleMode"
            first: true
            title: qsTr("Gentle mode")
            detail: qsTr("Pauses between chunks and when the Mac gets warm. Slower, cooler.")
        }
    }
}
