import QtQuick
import QtQuick.Layouts

/// What a button says, in its middle.
Item {
    id: face

    property string text
    property string iconName
    property string keyText
    property int controlSize: 36
    property color color: Theme.ink
    /// Of the button; transparent where it has no fill of its own.
    property color fill: "transparent"

    implicitWidth: Math.ceil(row.implicitWidth)
    implicitHeight: row.implicitHeight

    RowLayout {
        id: row
        anchors.centerIn: parent
        width: Math.min(implicitWidth, face.width)
        spacing: face.controlSize >= 36 ? 8 : 6

        Icon {
            visible: face.iconName !== ""
            name: face.iconName
            size: face.controlSize >= 36 ? 20 : 16
            color: face.color
        }
        Txt {
            visible: face.text !== ""
            text: face.text
            size: face.controlSize >= 44 ? 15 : 13
            weight: 600
            color: face.color
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Kbd {
            visible: face.keyText !== ""
            text: face.keyText
            on: face.fill
        }
    }
}
