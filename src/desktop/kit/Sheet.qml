import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

/// A question or a form above the window. What it holds stands in a column that scrolls; Escape rejects, Control and
/// Return accept.
T.Dialog {
    id: sheet

    property string subtitle
    property string iconName
    /// No button where it is empty.
    property string acceptText
    property string rejectText: qsTr("Cancel")
    property bool acceptEnabled: true
    property bool danger: false
    /// A third way out, quieter than the others. No button where it is empty.
    property string otherText
    signal otherChosen()
    /// At the left of the footer.
    property string note
    property real sheetWidth: 680
    default property alias content: body.data

    function acceptIfEnabled() {
        if (sheet.acceptEnabled && sheet.acceptText !== "")
            sheet.accept();
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(sheetWidth, (parent?.width ?? 900) - 32)
    height: Math.min(implicitHeight, (parent?.height ?? 600) - 32)
    implicitHeight: 80 + body.implicitHeight + 48 + (footer.visible ? 80 : 0)
    modal: true
    focus: true
    padding: 0
    closePolicy: T.Popup.CloseOnEscape

    background: Surface { elevation: 3; radius: 16; fill: Theme.paper }

    header: Item {
        implicitHeight: 80

        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 24
            anchors.rightMargin: 16
            spacing: 16

            Rectangle {
                visible: sheet.iconName !== ""
                implicitWidth: 40
                implicitHeight: 40
                radius: 10
                color: Theme.accentSoft
                Icon {
                    anchors.centerIn: parent
                    name: sheet.iconName
                    color: Theme.ink
                }
            }
            ColumnLayout {
                spacing: 2
                Txt {
                    text: sheet.title
                    size: 18
                    weight: 700
                    Layout.fillWidth: true
                    Accessible.role: Accessible.Heading
                }
                Txt {
                    visible: sheet.subtitle !== ""
                    text: sheet.subtitle
                    color: Theme.ink2
                    Layout.fillWidth: true
                }
            }
            IconButton {
                iconName: "close"
                label: qsTr("Close")
                controlSize: 36
                onClicked: sheet.reject()
            }
        }
        Divider {
            anchors.bottom: parent.bottom
            width: parent.width
        }
    }

    contentItem: Flickable {
        id: flick
        clip: true
        contentHeight: body.implicitHeight + 48
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        T.ScrollBar.vertical: Scrollbar {}

        ColumnLayout {
            id: body
            x: 24
            y: 24
            width: flick.width - 48
            spacing: 16
        }
        Shortcut {
            sequences: ["Ctrl+Return", "Ctrl+Enter"]
            enabled: sheet.opened
            onActivated: sheet.acceptIfEnabled()
        }
    }

    footer: Item {
        visible: sheet.acceptText !== "" || sheet.rejectText !== ""
        implicitHeight: visible ? 80 : 0

        Divider { width: parent.width }
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 24
            anchors.rightMargin: 24
            spacing: 12

            Txt {
                text: sheet.note
                color: Theme.ink2
                Layout.fillWidth: true
            }
            PushButton {
                visible: sheet.otherText !== ""
                kind: "ghost"
                text: sheet.otherText
                onClicked: sheet.otherChosen()
            }
            PushButton {
                visible: sheet.rejectText !== ""
                kind: "ghost"
                text: sheet.rejectText
                onClicked: sheet.reject()
            }
            PushButton {
                visible: sheet.acceptText !== ""
                enabled: sheet.acceptEnabled
                kind: sheet.danger ? "danger" : "primary"
                text: sheet.acceptText
                onClicked: sheet.accept()
            }
        }
    }

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
        Behavior on opacity { NumberAnimation { duration: Theme.hover } }
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hover }
        NumberAnimation { property: "scale"; from: 0.97; to: 1; duration: Theme.slide; easing.type: Easing.OutQuint }
    }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.hover } }
}
