import QtQuick
import QtQuick.Templates as T

/// Opened by `popup()` at the pointer or `open()` at its place.
T.Menu {
    id: menu

    property real widest: 0
    function measure() {
        let width = 176;
        for (let i = 0; i < menu.count; ++i)
            width = Math.max(width, menu.itemAt(i).implicitWidth);
        menu.widest = width;
    }
    onAboutToShow: measure()

    implicitWidth: widest + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    padding: 4
    margins: 8
    overlap: 4
    cascade: true

    background: Surface { elevation: 2; stroke: Theme.edge }
    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: contentHeight > height
        clip: interactive
        currentIndex: menu.currentIndex
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: Scrollbar {}
    }
    delegate: PopupMenuItem {}
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hover } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.hover } }

    T.Overlay.modal: Item {}
}
