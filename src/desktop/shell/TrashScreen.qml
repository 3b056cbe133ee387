import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Shell
import Tessary.Desk

/// Deleted pages, to be brought back or let go for good.
FocusScope {
    id: screen

    required property Desk desk

    TrashModel {
        id: model
        desk: screen.desk
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 32
        spacing: 16

        RowLayout {
            Layout.fillWidth: true
            ColumnLayout {
                spacing: 2
                Txt {
                    text: qsTr("Trash")
                    size: 24
                    weight: 700
                }
                Txt {
                    text: model.total === 0 ? qsTr("The trash is empty.")
                                            : qsTr("Pages stay here for 30 days, then they are deleted for good.")
                    color: Theme.ink2
                }
            }
            Item { Layout.fillWidth: true }
            PushButton {
                visible: model.total > 0
                kind: "danger"
                text: qsTr("Empty the trash…")
                onClicked: ask.open()
            }
        }

        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            focus: true
            model: model
            boundsBehavior: Flickable.StopAtBounds
            delegate: Item {
                id: row
                required property int index
                required property string pageId
                required property string title
                required property int subpages
                required property int daysLeft
                width: list.width
                height: 52
                Divider {
                    visible: row.index > 0
                    width: parent.width
                }
                RowLayout {
                    anchors.fill: parent
                    spacing: 12
                    Icon { name: "page" }
                    Txt {
                        text: row.subpages === 0 ? row.title
                            : row.subpages === 1 ? qsTr("%1 and its subpage").arg(row.title)
                            : qsTr("%1 and %2 subpages").arg(row.title).arg(row.subpages)
                        weight: 600
                        Layout.fillWidth: true
                    }
                    Txt {
                        text: row.daysLeft === 1 ? qsTr("1 day left") : qsTr("%1 days left").arg(row.daysLeft)
                        color: Theme.ink3
                    }
                    PushButton {
                        controlSize: 28
                        text: qsTr("Restore")
                        Accessible.name: qsTr("Restore %1").arg(row.title)
                        iconName: "undo"
                        onClicked: model.restore(row.pageId)
                    }
                }
            }
            EmptyState {
                visible: list.count === 0
                anchors.centerIn: parent
                text: qsTr("Nothing here. Deleted pages can be brought back from here for 30 days.")
            }
        }
    }

    Sheet {
        id: ask
        sheetWidth: 480
        title: qsTr("Empty the trash?")
        acceptText: qsTr("Delete for good")
        rejectText: qsTr("Keep")
        danger: true
        onAccepted: model.empty()
        Txt {
            Layout.fillWidth: true
            wrap: true
            text: qsTr("This permanently deletes everything in the Trash. This cannot be undone.")
        }
    }
}
