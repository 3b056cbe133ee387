import QtQuick

/// Lies over the editor it serves: the right button opens what can be done with its text.
Item {
    id: edit

    /// A text field or a text area.
    required property var editor
    readonly property bool secret: (edit.editor.echoMode ?? TextInput.Normal) !== TextInput.Normal

    function openAt(x: real, y: real) {
        edit.editor.forceActiveFocus(Qt.MouseFocusReason);
        menu.active = true;
        const opened = menu.item as PopupMenu;
        opened.popup(edit, x, y);
    }
    /// For the menu key.
    function openAtCursor() {
        const cursor = edit.editor.cursorRectangle;
        edit.openAt(cursor.x, cursor.y + cursor.height);
    }

    anchors.fill: parent
    Accessible.ignored: true

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: point => edit.openAt(point.position.x, point.position.y)
    }
    // A menu for each field would be costly, so it is made when someone asks for it.
    Loader {
        id: menu
        active: false
        sourceComponent: PopupMenu {
            PopupMenuItem {
                text: qsTr("Undo")
                iconName: "undo"
                keyText: "Ctrl Z"
                enabled: edit.editor.canUndo && !edit.editor.readOnly
                onTriggered: edit.editor.undo()
            }
            PopupMenuItem {
                text: qsTr("Redo")
                iconName: "redo"
                keyText: "Ctrl Shift Z"
                enabled: edit.editor.canRedo && !edit.editor.readOnly
                onTriggered: edit.editor.redo()
            }
            PopupMenuLine {}
            PopupMenuItem {
                text: qsTr("Cut")
                iconName: "cut"
                keyText: "Ctrl X"
                enabled: edit.editor.selectedText !== "" && !edit.editor.readOnly && !edit.secret
                onTriggered: edit.editor.cut()
            }
            PopupMenuItem {
                text: qsTr("Copy")
                iconName: "copy"
                keyText: "Ctrl C"
                enabled: edit.editor.selectedText !== "" && !edit.secret
                onTriggered: edit.editor.copy()
            }
            PopupMenuItem {
                text: qsTr("Paste")
                iconName: "paste"
                keyText: "Ctrl V"
                enabled: edit.editor.canPaste
                onTriggered: edit.editor.paste()
            }
            PopupMenuLine {}
            PopupMenuItem {
                text: qsTr("Select all")
                iconName: "select"
                keyText: "Ctrl A"
                enabled: edit.editor.length > 0
                onTriggered: edit.editor.selectAll()
            }
        }
    }
}
