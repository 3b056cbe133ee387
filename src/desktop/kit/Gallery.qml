import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

/// Everything of the kit on one page, to be looked at in both themes and in any notebook's colour.
Rectangle {
    id: gallery

    property alias scrolled: flick.contentY
    readonly property real full: flick.contentHeight

    color: Theme.paper

    Flickable {
        id: flick
        anchors.fill: parent
        contentHeight: column.implicitHeight + 64
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: Scrollbar {}
        Keys.onDownPressed: flick.flick(0, -600)
        Keys.onUpPressed: flick.flick(0, 600)

        ColumnLayout {
            id: column
            x: 32
            y: 32
            width: gallery.width - 64
            spacing: 24

            RowLayout {
                spacing: 12
                Layout.fillWidth: true
                Txt {
                    text: qsTr("Gallery")
                    size: 24
                    weight: 700
                    Layout.fillWidth: true
                }
                Repeater {
                    model: ["#FFDB00", "#4F9A66", "#7A3E2B", "#35528F", "#D9734E", "#8A5A83", "#201C17"]
                    delegate: T.AbstractButton {
                        id: color
                        required property string modelData
                        implicitWidth: 24
                        implicitHeight: 24
                        focusPolicy: Qt.StrongFocus
                        Accessible.role: Accessible.Button
                        Accessible.name: qsTr("Accent %1").arg(modelData)
                        Accessible.onPressAction: color.clicked()
                        onClicked: Theme.accent = modelData
                        background: Rectangle {
                            radius: 12
                            color: color.modelData
                            border.width: 1
                            border.color: Theme.edge
                            FocusRing { target: color; corner: 12 }
                        }
                    }
                }
                Toggle {
                    text: qsTr("Dark")
                    checked: Theme.dark
                    onToggled: Theme.dark = checked
                }
                Toggle {
                    text: qsTr("Less motion")
                    checked: Theme.reduceMotion
                    onToggled: Theme.reduceMotion = checked
                }
            }
            GalleryTokens { Layout.fillWidth: true }
            GalleryControls { Layout.fillWidth: true }
            GalleryPieces {
                Layout.fillWidth: true
                toasts: messages
            }
        }
    }
    ToastHost {
        id: messages
        objectName: "galleryToasts"
        anchors.fill: parent
    }
}
