import QtQuick
import QtQuick.Templates as T

/// One of many, from a list that opens.
T.ComboBox {
    id: box

    implicitWidth: 200
    implicitHeight: 36
    leftPadding: 12
    rightPadding: 36
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.ComboBox
    Accessible.onPressAction: box.popup.open()

    background: Rectangle {
        radius: 8
        color: box.down ? Theme.mix(Theme.raised, Theme.ink, 0.09)
             : box.hovered && box.enabled ? Theme.mix(Theme.raised, Theme.ink, 0.05) : Theme.raised
        border.width: 1
        border.color: Theme.edge
        Behavior on color { ColorAnimation { duration: Theme.hover } }
        FocusRing { target: box; corner: 8 }
    }
    contentItem: Txt {
        text: box.displayText
        weight: 500
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: Icon {
        x: box.width - width - 10
        y: Math.round((box.height - height) / 2)
        name: "down"
        size: 16
    }
    delegate: MenuRow {
        id: option
        required property int index
        width: ListView.view ? ListView.view.width : 0
        text: box.textAt(option.index)
        iconName: option.index === box.currentIndex ? "check" : ""
        iconRoom: true
        current: option.index === box.highlightedIndex
        highlighted: current
    }
    popup: T.Popup {
        y: box.height + 4
        width: box.width
        implicitHeight: Math.min(contentItem.implicitHeight + 8, 320)
        padding: 4
        margins: 8
        background: Surface { elevation: 2; stroke: Theme.edge }
        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            model: box.delegateModel
            currentIndex: box.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: Scrollbar {}
        }
        enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hover } }
        exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.hover } }
    }
}
