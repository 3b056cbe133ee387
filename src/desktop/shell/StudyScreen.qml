import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Shell
import Tessary.Desk

/// What waits for review, notebook by notebook.
FocusScope {
    id: screen

    required property Desk desk
    signal review()
    signal openNotebook(string id)

    SidebarModel {
        id: model
        desk: screen.desk
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 32
        spacing: 16

        RowLayout {
            Layout.fillWidth: true
            spacing: 12
            ColumnLayout {
                spacing: 2
                Txt {
                    text: qsTr("Study")
                    size: 24
                    weight: 700
                }
                Txt {
                    text: model.due === 0 ? qsTr("Nothing is due now.")
                        : model.due === 1 ? qsTr("1 card is due") : qsTr("%1 cards are due").arg(model.due)
                    color: Theme.ink2
                }
            }
            Item { Layout.fillWidth: true }
            PushButton {
                focus: true
                visible: model.due > 0
                kind: "primary"
                text: qsTr("Review %1").arg(model.due)
                onClicked: screen.review()
            }
        }

        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            model: model
            boundsBehavior: Flickable.StopAtBounds
            delegate: Item {
                id: row
                required property int index
                required property string notebookId
                required property string name
                required property color color
                required property int due
                width: list.width
                height: 52
                Divider {
                    visible: row.index > 0
                    width: parent.width
                }
                RowLayout {
                    anchors.fill: parent
                    spacing: 12
                    Swatch { color: row.color }
                    Txt {
                        text: row.name
                        weight: 600
                        Layout.fillWidth: true
                    }
                    Txt {
                        text: row.due === 0 ? qsTr("nothing due") : qsTr("%1 due").arg(row.due)
                        color: row.due === 0 ? Theme.ink3 : Theme.ink
                        weight: row.due === 0 ? 400 : 600
                    }
                    PushButton {
                        controlSize: 28
                        text: qsTr("Open")
                        onClicked: screen.openNotebook(row.notebookId)
                    }
                }
            }
            EmptyState {
                visible: list.count === 0
                anchors.centerIn: parent
                text: qsTr("Cards of your notebooks gather here.")
            }
        }
    }
}
