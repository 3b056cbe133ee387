import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages

/// The files of the page; a click opens one with the system's program.
Flow {
    id: files

    required property PageAttachments attachments
    property bool readOnly: false

    spacing: 8
    visible: attachments.count > 0
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Attachments")

    Repeater {
        model: files.attachments
        delegate: T.AbstractButton {
            id: file

            required property int index
            required property string name
            required property string kind
            required property string detail
            required property bool missing

            implicitWidth: Math.min(files.width, leftPadding + implicitContentWidth + rightPadding)
            implicitHeight: 40
            leftPadding: 12
            rightPadding: 4
            focusPolicy: Qt.StrongFocus
            Accessible.role: Accessible.Button
            Accessible.name: qsTr("%1, %2").arg(name).arg(detail)
            Accessible.onPressAction: file.clicked()
            Keys.onReturnPressed: file.clicked()
            Keys.onEnterPressed: file.clicked()
            Keys.onDeletePressed: if (!files.readOnly) files.attachments.remove(index)
            onClicked: files.attachments.open(index)

            background: Rectangle {
                radius: 10
                color: Theme.raised
                border.width: 1
                border.color: file.missing ? Theme.bad : Theme.line
                Rectangle {
                    anchors.fill: parent
                    radius: parent.radius
                    color: file.down ? Theme.pressTint : file.hovered ? Theme.hoverTint : "transparent"
                }
                FocusRing { target: file; corner: 10 }
            }
            contentItem: RowLayout {
                spacing: 8
                Icon {
                    name: file.missing ? "alert" : file.kind === "pdf" ? "page" : "clip"
                    size: 18
                    color: file.missing ? Theme.bad : Theme.ink2
                }
                Txt {
                    text: file.name
                    weight: 500
                    Layout.fillWidth: true
                    Layout.maximumWidth: 260
                    Accessible.ignored: true
                }
                Txt {
                    text: file.detail
                    size: 12
                    color: file.missing ? Theme.bad : Theme.ink3
                    Accessible.ignored: true
                }
                IconButton {
                    controlSize: 28
                    iconName: "close"
                    label: qsTr("Remove %1").arg(file.name)
                    visible: !files.readOnly
                    focusPolicy: Qt.NoFocus
                    onClicked: files.attachments.remove(file.index)
                }
            }
        }
    }
}
