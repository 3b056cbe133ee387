import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit

/// One card of a deck. Pressed, it opens for writing; with Control or Shift it is picked.
T.ItemDelegate {
    id: row

    required property int index
    required property string cardId
    required property string kind
    required property string front
    required property string back
    required property string page
    required property string pageId
    required property string dueText
    required property bool isDue
    required property string recallText
    required property string stability
    required property bool suspended
    required property bool flagged
    required property bool selected
    property bool current: false
    property bool wide: true
    property real pageWidth: 150
    signal edit()
    signal pick(bool extend)
    signal menu()

    implicitHeight: 44
    leftPadding: 8
    rightPadding: 4
    hoverEnabled: true
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.ListItem
    Accessible.name: front
    Accessible.description: [back, page, dueText, suspended ? qsTr("suspended") : "", flagged ? qsTr("flagged") : ""]
                            .filter(text => text !== "").join(", ")
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.onPressAction: edit()

    background: Rectangle {
        radius: 8
        color: row.selected ? Theme.accentSoft : row.hovered ? Theme.hoverTint : "transparent"
        Divider {
            visible: row.index > 0 && !row.selected
            x: 8
            width: parent.width - 16
        }
        FocusRing {
            target: row
            shown: row.current
            corner: 4
            anchors.margins: 2
        }
    }
    contentItem: RowLayout {
        spacing: 12
        opacity: row.suspended ? 0.6 : 1

        Check {
            checked: row.selected
            focusPolicy: Qt.NoFocus
            Accessible.name: qsTr("Pick %1").arg(row.front)
            onToggled: {
                row.pick(false);
                checked = Qt.binding(() => row.selected);
            }
        }
        Icon {
            name: row.kind === "cloze" ? "cloze" : row.kind === "multipleChoice" ? "list" : "study"
            size: 16
            color: Theme.ink3
        }
        Txt {
            text: row.front
            weight: 600
            Layout.fillWidth: true
            Layout.preferredWidth: 3
        }
        Txt {
            text: row.back
            color: Theme.ink2
            Layout.fillWidth: true
            Layout.preferredWidth: 2
        }
        Txt {
            visible: row.wide
            text: row.page
            size: 12
            color: Theme.ink2
            Layout.preferredWidth: row.pageWidth
        }
        Icon {
            name: row.flagged ? "flag" : ""
            size: 16
            color: Theme.warn
        }
        Txt {
            text: row.dueText
            size: 12
            weight: row.isDue ? 600 : 400
            color: row.isDue ? Theme.accentText : Theme.ink2
            Layout.preferredWidth: 72
        }
        Txt {
            text: row.recallText === "" ? "–" : row.recallText
            size: 12
            weight: 600
            color: row.recallText === "" ? Theme.ink3 : Theme.ink2
            Layout.preferredWidth: 40
        }
        Txt {
            visible: row.wide
            text: row.stability === "" ? "–" : row.stability
            size: 12
            color: Theme.ink3
            Layout.preferredWidth: 48
        }
        IconButton {
            iconName: "more"
            label: qsTr("More")
            controlSize: 28
            focusPolicy: Qt.NoFocus
            onClicked: row.menu()
        }
    }

    TapHandler {
        acceptedModifiers: Qt.NoModifier
        onTapped: row.edit()
    }
    TapHandler {
        acceptedModifiers: Qt.ControlModifier
        onTapped: row.pick(false)
    }
    TapHandler {
        acceptedModifiers: Qt.ShiftModifier
        onTapped: row.pick(true)
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: row.menu()
    }
}
