import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit

/// Sentences under each other, as many as there may be, in a box of their own.
Rectangle {
    id: box

    property var lines: []

    visible: list.count > 0
    implicitHeight: Math.min(list.contentHeight, 200) + 16
    radius: 8
    color: Theme.sunken
    border.color: Theme.line
    Layout.fillWidth: true

    ListView {
        id: list
        anchors { fill: parent; leftMargin: 12; rightMargin: 4; topMargin: 8; bottomMargin: 8 }
        clip: true
        spacing: 4
        model: box.lines
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: contentHeight > height
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Details")
        T.ScrollBar.vertical: Scrollbar {}
        Keys.onUpPressed: flick(0, 400)
        Keys.onDownPressed: flick(0, -400)
        delegate: Txt {
            required property string modelData
            width: list.width - 12
            text: modelData
            wrap: true
            color: Theme.ink2
        }
        FocusRing { target: list; corner: 8; anchors.margins: -8 }
    }
}
