import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit

/// A few pages to go to, each with how well it is remembered or when it was edited.
Surface {
    id: card

    property string title
    property string detail
    property var pages: []
    signal open(string place, string id)

    implicitHeight: column.implicitHeight + 28
    radius: 16
    elevation: 1

    ColumnLayout {
        id: column
        x: 24
        y: 20
        width: parent.width - 48
        spacing: 0

        RowLayout {
            Layout.bottomMargin: 8
            Txt {
                Layout.fillWidth: true
                text: card.title
                size: 15
                weight: 600
                Accessible.role: Accessible.Heading
            }
            Txt {
                text: card.detail
                size: 12
                color: Theme.ink3
            }
        }
        Repeater {
            model: card.pages
            delegate: T.AbstractButton {
                id: row
                required property var modelData
                readonly property bool rated: modelData.recall !== undefined
                readonly property color state: !rated || modelData.recall >= 0.8 ? Theme.good
                                             : modelData.recall >= 0.6 ? Theme.warn : Theme.bad

                Layout.fillWidth: true
                implicitHeight: 44
                hoverEnabled: true
                focusPolicy: Qt.StrongFocus
                Accessible.role: Accessible.Button
                Accessible.name: rated ? qsTr("%1, %2, %3 %").arg(modelData.title).arg(modelData.notebook)
                                                             .arg(Math.round(modelData.recall * 100))
                                       : qsTr("%1, %2, edited %3").arg(modelData.title).arg(modelData.notebook)
                                                                  .arg(modelData.edited)
                Accessible.onPressAction: row.clicked()
                Keys.onReturnPressed: row.clicked()
                Keys.onEnterPressed: row.clicked()
                onClicked: card.open(modelData.place, modelData.pageId)

                background: Item {
                    Divider { width: parent.width }
                    Rectangle {
                        anchors.fill: parent
                        anchors.leftMargin: -12
                        anchors.rightMargin: -12
                        radius: 8
                        color: row.down ? Theme.pressTint : row.hovered ? Theme.hoverTint : "transparent"
                    }
                    FocusRing { target: row }
                }
                contentItem: RowLayout {
                    spacing: 12
                    Swatch {
                        size: 18
                        color: row.modelData.color === "" ? Theme.edge : row.modelData.color
                    }
                    ColumnLayout {
                        Layout.fillWidth: true
                        spacing: 0
                        Txt {
                            Layout.fillWidth: true
                            text: row.modelData.title
                            weight: 600
                        }
                        Txt {
                            Layout.fillWidth: true
                            text: row.modelData.notebook
                            size: 12
                            color: Theme.ink3
                        }
                    }
                    Bar {
                        visible: row.rated
                        value: row.rated ? row.modelData.recall : 0
                        fill: row.state
                        label: qsTr("Chance you remember")
                    }
                    Numeral {
                        visible: row.rated
                        Layout.preferredWidth: 40
                        text: row.rated ? qsTr("%1 %").arg(Math.round(row.modelData.recall * 100)) : ""
                        color: row.state
                    }
                    Txt {
                        visible: !row.rated
                        text: row.rated ? "" : row.modelData.edited
                        color: Theme.ink3
                    }
                    Icon {
                        name: "right"
                        size: 16
                        color: Theme.ink3
                    }
                }
            }
        }
    }
}
