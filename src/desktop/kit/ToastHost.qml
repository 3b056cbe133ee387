import QtQuick
import QtQuick.Layouts

/// Fills what it lies over and shows one message at a time at the bottom of it, for five seconds or as long as someone
/// is at it.
Item {
    id: host

    property string text
    property string actionText
    property var action: null
    property bool open: false

    /// `action` is called when the user presses `actionText`; both may be left out.
    function show(text: string, actionText: var, action: var) {
        host.text = text;
        host.actionText = actionText ?? "";
        host.action = action ?? null;
        host.open = true;
        life.restart();
    }
    function dismiss() { host.open = false; }
    function act() {
        host.dismiss();
        if (host.action)
            host.action.call(null);
    }

    z: 1000

    Timer {
        id: life
        interval: 5000
        running: host.open && !pointer.hovered && !button.activeFocus
        onTriggered: host.dismiss()
    }

    Surface {
        id: toast
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: host.open ? 24 : 12
        width: Math.min(Math.max(320, row.implicitWidth + 32), 480, host.width - 32)
        height: Math.max(48, row.implicitHeight + 20)
        radius: 10
        elevation: 3
        fill: Theme.ink
        stroke: Theme.ink
        opacity: host.open ? 1 : 0
        visible: opacity > 0
        Accessible.role: Accessible.AlertMessage
        Accessible.name: host.text
        Behavior on opacity { NumberAnimation { duration: Theme.hover } }
        Behavior on anchors.bottomMargin { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutQuint } }

        HoverHandler { id: pointer }
        RowLayout {
            id: row
            anchors.fill: parent
            anchors.leftMargin: 16
            anchors.rightMargin: 8
            spacing: 12

            Txt {
                text: host.text
                weight: 500
                wrap: true
                color: Theme.paper
                verticalAlignment: Text.AlignVCenter
                Layout.fillWidth: true
                Layout.maximumWidth: 360
                Accessible.ignored: true
            }
            PushButton {
                id: button
                visible: host.actionText !== ""
                kind: "ghost"
                controlSize: 28
                text: host.actionText
                foreground: Theme.readable(Theme.accent, Theme.ink, 4.6)
                focusColor: Theme.paper
                onClicked: host.act()
            }
            IconButton {
                controlSize: 28
                iconName: "close"
                label: qsTr("Dismiss")
                tint: Theme.paper
                focusColor: Theme.paper
                onClicked: host.dismiss()
            }
        }
    }
}
