import QtQuick
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages

/// What can be done with one tag: its colour in the whole library, its pages, and off the page with it.
T.Popup {
    id: popup

    required property PageTags tags
    property string tag
    property string color
    readonly property var none: [{ color: "", name: qsTr("No color") }]
    readonly property var colors: none.concat(tags.palette)
    signal showAsked(string tag)
    signal removeAsked(string tag)

    function openFor(chip: Item, tag: string, color: string) {
        popup.parent = chip;
        popup.y = chip.height + 4;
        popup.tag = tag;
        popup.color = color;
        popup.open();
    }
    function paint(color: string) {
        popup.close();
        popup.tags.setColor(popup.tag, color);
    }

    implicitWidth: contentItem.implicitWidth + 8
    implicitHeight: contentItem.implicitHeight + 8
    padding: 4
    margins: 8
    focus: true
    background: Surface { elevation: 2; stroke: Theme.edge }
    contentItem: Column {
        Row {
            padding: 8
            spacing: 6
            Repeater {
                model: popup.colors
                delegate: T.AbstractButton {
                    id: dot
                    required property var modelData
                    readonly property bool chosen: modelData.color === popup.color
                    implicitWidth: 22
                    implicitHeight: 22
                    focusPolicy: Qt.StrongFocus
                    Accessible.role: Accessible.RadioButton
                    Accessible.name: modelData.name
                    Accessible.checked: chosen
                    Accessible.onPressAction: dot.clicked()
                    Keys.onReturnPressed: dot.clicked()
                    Keys.onEnterPressed: dot.clicked()
                    onClicked: popup.paint(modelData.color)
                    background: Rectangle {
                        radius: 11
                        color: dot.modelData.color === "" ? Theme.raised : dot.modelData.color
                        border.width: dot.chosen ? 2 : 1
                        border.color: dot.chosen ? Theme.ink : dot.hovered ? Theme.ink3 : Theme.edge
                        Icon {
                            anchors.centerIn: parent
                            visible: dot.chosen || dot.modelData.color === ""
                            name: dot.chosen ? "check" : "close"
                            size: 12
                            color: dot.modelData.color === "" ? Theme.ink2 : Theme.onColor(dot.modelData.color)
                        }
                        FocusRing { target: dot; corner: 11; anchors.margins: -3 }
                    }
                    Tip {
                        text: dot.modelData.name
                        visible: dot.hovered
                    }
                }
            }
        }
        Divider { width: parent.width }
        Item { width: 1; height: 4 }
        MenuRow {
            width: parent.width
            text: qsTr("Show its pages")
            iconName: "filter"
            iconRoom: true
            focusPolicy: Qt.StrongFocus
            Accessible.role: Accessible.Button
            onClicked: { popup.close(); popup.showAsked(popup.tag); }
            FocusRing { target: parent; corner: 4; anchors.margins: 0 }
        }
        MenuRow {
            width: parent.width
            text: qsTr("Take it off the page")
            iconName: "close"
            iconRoom: true
            focusPolicy: Qt.StrongFocus
            Accessible.role: Accessible.Button
            onClicked: { popup.close(); popup.removeAsked(popup.tag); }
            FocusRing { target: parent; corner: 4; anchors.margins: 0 }
        }
    }
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hover } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.hover } }
}
