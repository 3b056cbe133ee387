import QtQuick
import QtQuick.Templates as T

/// One line to write in.
T.TextField {
    id: field

    property bool invalid: false
    /// Quieter, where a picture and the placeholder already say what it is.
    property color outline: Theme.edge

    implicitWidth: 240
    implicitHeight: 36
    leftPadding: 12
    rightPadding: 12
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    opacity: enabled ? 1 : Theme.disabledOpacity

    color: Theme.ink
    placeholderTextColor: Theme.ink3
    selectionColor: Theme.highlight
    selectedTextColor: Theme.ink
    font.family: Theme.ui
    font.pixelSize: 13
    font.weight: 500

    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    Keys.onMenuPressed: edit.openAtCursor()

    EditMenu {
        id: edit
        editor: field
    }
    Txt {
        visible: field.text === "" && field.preeditText === ""
        x: field.leftPadding
        width: field.width - field.leftPadding - field.rightPadding
        height: field.height
        verticalAlignment: Text.AlignVCenter
        text: field.placeholderText
        color: field.placeholderTextColor
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: 8
        color: Theme.raised
        border.width: field.activeFocus ? 2 : 1
        border.color: field.invalid ? Theme.bad : field.activeFocus ? Theme.focus
                    : field.hovered && field.enabled ? Theme.ink3 : field.outline
    }
}
