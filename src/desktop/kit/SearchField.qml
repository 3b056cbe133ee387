import QtQuick

/// Escape empties it; pressed again it is left to the screen.
Field {
    id: field

    /// The shortcut that leads here, shown while it is empty.
    property string keyText

    leftPadding: 34
    rightPadding: 36
    outline: Theme.line
    Accessible.searchEdit: true
    Keys.onEscapePressed: event => {
        event.accepted = field.text !== "";
        field.clear();
    }

    Icon {
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
        size: 16
        color: Theme.ink3
    }
    Kbd {
        visible: field.keyText !== "" && field.text === "" && !field.activeFocus
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: field.keyText
    }
    IconButton {
        visible: field.text !== ""
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        controlSize: 28
        iconName: "close"
        label: qsTr("Clear")
        onClicked: {
            field.clear();
            field.forceActiveFocus();
        }
    }
}
