import QtQuick
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages

/// Takes a new tag, and offers those of the library that fit what is typed.
T.TextField {
    id: field

    required property PageTags tags
    property var taken: []
    property var offers: []
    property int chosen: -1
    signal added(string tag)

    function add(tag: string) {
        field.clear();
        field.offers = [];
        field.added(tag);
    }
    function look() {
        field.offers = field.activeFocus ? field.tags.offers(field.text, field.taken) : [];
        field.chosen = -1;
    }

    implicitWidth: field.activeFocus || field.text !== "" ? 140 : 64
    implicitHeight: 28
    leftPadding: 26
    rightPadding: 8
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    color: Theme.ink
    placeholderText: qsTr("Tag")
    placeholderTextColor: Theme.ink2
    selectionColor: Theme.highlight
    selectedTextColor: Theme.ink
    font.family: Theme.ui
    font.pixelSize: 13
    font.weight: 500
    Accessible.role: Accessible.EditableText
    Accessible.name: qsTr("New tag")

    onTextEdited: look()
    onActiveFocusChanged: look()
    onAccepted: if (chosen >= 0) add(offers[chosen]); else if (text.trim() !== "") add(text)
    Keys.onDownPressed: chosen = Math.min(chosen + 1, offers.length - 1)
    Keys.onUpPressed: chosen = Math.max(chosen - 1, -1)
    Keys.onEscapePressed: event => {
        event.accepted = field.offers.length > 0 || field.text !== "";
        field.clear();
        field.offers = [];
    }
    Keys.onMenuPressed: edit.openAtCursor()

    EditMenu {
        id: edit
        editor: field
    }
    Icon {
        x: 6
        anchors.verticalCenter: parent.verticalCenter
        name: "plus"
        size: 14
        color: Theme.ink2
    }
    Txt {
        visible: field.text === "" && field.preeditText === ""
        x: field.leftPadding
        height: field.height
        verticalAlignment: Text.AlignVCenter
        weight: 500
        text: field.placeholderText
        color: field.placeholderTextColor
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: 14
        color: field.activeFocus ? Theme.raised : field.hovered ? Theme.hoverTint : "transparent"
        border.width: field.activeFocus ? 2 : 0
        border.color: Theme.focus
    }

    T.Popup {
        y: field.height + 4
        width: 200
        implicitHeight: contentItem.implicitHeight + 8
        padding: 4
        visible: field.activeFocus && field.offers.length > 0
        closePolicy: T.Popup.NoAutoClose
        background: Surface { elevation: 2; stroke: Theme.edge }
        contentItem: Column {
            Repeater {
                model: field.offers
                delegate: MenuRow {
                    id: offer
                    required property int index
                    required property string modelData
                    width: 192
                    leftPadding: 28
                    text: modelData
                    focusPolicy: Qt.NoFocus
                    current: index === field.chosen
                    onClicked: field.add(modelData)
                    Rectangle {
                        readonly property string tint: field.tags.colorOf(offer.modelData)
                        x: 10
                        anchors.verticalCenter: parent.verticalCenter
                        width: 10
                        height: 10
                        radius: 5
                        color: tint === "" ? "transparent" : tint
                        border.width: tint === "" ? 1 : 0
                        border.color: Theme.edge
                    }
                }
            }
        }
    }
}
