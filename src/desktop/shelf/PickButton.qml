import QtQuick
import QtQuick.Templates as T
import Tessary.Kit

/// One of a row of choices made by `siblings`; the arrow keys go along it.
T.AbstractButton {
    id: pick

    property string label
    property bool chosen: false
    /// Where Tab comes to the row: the chosen one.
    property bool tabStop: chosen
    property Repeater siblings
    property int place: 0

    function take() {
        pick.forceActiveFocus(Qt.TabFocusReason);
        pick.clicked();
    }
    function takeAt(place: int) {
        const other = pick.siblings.itemAt(place) as PickButton;
        if (other)
            other.take();
    }

    focusPolicy: tabStop || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: label
    Accessible.checkable: true
    Accessible.checked: chosen
    Accessible.onPressAction: pick.clicked()
    Keys.onLeftPressed: pick.takeAt(pick.place - 1)
    Keys.onRightPressed: pick.takeAt(pick.place + 1)

    FocusRing {
        target: pick
        corner: 6
    }
    Loader {
        active: pick.label !== "" && pick.hovered
        sourceComponent: Tip {
            parent: pick
            text: pick.label
            visible: pick.hovered
        }
    }
}
