import QtQuick
import QtQuick.Templates as T

/// Several lines to write in; Tab leaves it.
FocusScope {
    id: box

    property alias text: area.text
    property alias placeholderText: area.placeholderText
    property alias readOnly: area.readOnly
    property alias editor: area
    property bool invalid: false

    implicitWidth: 320
    implicitHeight: Math.min(Math.max(area.implicitHeight, 64), 200)
    activeFocusOnTab: false
    opacity: enabled ? 1 : Theme.disabledOpacity

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Theme.raised
        border.width: area.activeFocus ? 2 : 1
        border.color: box.invalid ? Theme.bad : area.activeFocus ? Theme.focus
                    : area.hovered && box.enabled ? Theme.ink3 : Theme.edge
    }
    Flickable {
        id: flick
        anchors.fill: parent
        anchors.margins: 2
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: Scrollbar {}

        T.TextArea.flickable: T.TextArea {
            id: area
            leftPadding: 10
            rightPadding: 12
            topPadding: 7
            bottomPadding: 7
            implicitHeight: contentHeight + topPadding + bottomPadding
            focus: true
            activeFocusOnTab: true
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            selectByMouse: true
            color: Theme.ink
            placeholderTextColor: Theme.ink3
            selectionColor: Theme.highlight
            selectedTextColor: Theme.ink
            font.family: Theme.ui
            font.pixelSize: 13
            font.weight: 500
            KeyNavigation.priority: KeyNavigation.BeforeItem
            Accessible.role: Accessible.EditableText
            Accessible.multiLine: true
            Accessible.name: area.placeholderText
            Keys.priority: Keys.BeforeItem
            Keys.onMenuPressed: edit.openAtCursor()
            Keys.onTabPressed: area.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: area.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

            EditMenu {
                id: edit
                editor: area
            }
            Txt {
                visible: area.length === 0 && area.preeditText === ""
                x: area.leftPadding
                y: area.topPadding
                width: area.width - area.leftPadding - area.rightPadding
                text: area.placeholderText
                color: area.placeholderTextColor
                Accessible.ignored: true
            }
        }
    }
}
