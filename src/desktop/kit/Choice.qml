import QtQuick
import QtQuick.Templates as T

/// One of a few, side by side; the arrow keys move it. `activated` comes from the user only.
T.Container {
    id: choice

    property list<string> model
    signal activated(int index)

    function pick(index: int) {
        if (index < 0 || index >= choice.model.length || index === choice.currentIndex)
            return;
        choice.setCurrentIndex(index);
        choice.activated(index);
    }

    /// Of the longest word; all options are equally wide.
    property real widest: 0

    implicitWidth: choice.model.length * (widest + 2) - 2 + leftPadding + rightPadding
    implicitHeight: 36
    padding: 3
    focusPolicy: Qt.StrongFocus
    currentIndex: 0
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.Grouping
    Keys.onLeftPressed: choice.pick(choice.currentIndex - 1)
    Keys.onRightPressed: choice.pick(choice.currentIndex + 1)

    background: Rectangle {
        radius: 8
        color: Theme.sunken
        border.width: 1
        border.color: Theme.edge
        FocusRing { target: choice; corner: 8 }
    }
    contentItem: Row {
        spacing: 2

        Repeater {
            model: choice.model
            delegate: ChoiceSegment {
                required property int index
                required property string modelData
                width: (choice.availableWidth + 2) / choice.model.length - 2
                height: choice.availableHeight
                text: modelData
                current: index === choice.currentIndex
                onImplicitWidthChanged: choice.widest = Math.max(choice.widest, implicitWidth)
                onClicked: choice.pick(index)
            }
        }
    }
}
