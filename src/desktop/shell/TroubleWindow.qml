import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessary.Kit

/// Comes instead of the window when there is no library to show in it.
ApplicationWindow {
    id: window

    required property string headline
    required property string sentence
    /// "system", "light" or "dark".
    property string theme: "system"

    width: 480
    height: Math.ceil(body.implicitHeight) + 48
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    flags: Qt.Dialog
    visible: true
    title: qsTr("Tessary")
    color: Theme.paper

    SystemPalette { id: systemPalette }
    Binding {
        target: Theme
        property: "dark"
        value: window.theme === "dark" || (window.theme === "system" && systemPalette.window.hslLightness < 0.5)
    }
    Shortcut {
        sequences: ["Escape", "Ctrl+Q", "Ctrl+W"]
        onActivated: window.close()
    }

    ColumnLayout {
        id: body
        x: 24
        y: 24
        width: window.width - 48
        spacing: 20

        RowLayout {
            spacing: 16
            Plim {
                size: 64
                Layout.alignment: Qt.AlignTop
            }
            ColumnLayout {
                spacing: 6
                Txt {
                    text: window.headline
                    size: 18
                    weight: 700
                    wrap: true
                    Layout.fillWidth: true
                    Accessible.role: Accessible.Heading
                }
                Txt {
                    text: window.sentence
                    color: Theme.ink2
                    wrap: true
                    Layout.fillWidth: true
                }
            }
        }
        PushButton {
            kind: "primary"
            text: qsTr("Close")
            focus: true
            Layout.alignment: Qt.AlignRight
            onClicked: window.close()
        }
    }
}
