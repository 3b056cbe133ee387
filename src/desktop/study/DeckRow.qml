import QtQuick
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
    required property DeckColumns columns
    signal edit()
    signal pick(bool extend)
    signal menu()

    implicitHeight: 44
    padding: 0
    hoverEnabled: true
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.ListItem
    Accessible.name: front
    Accessible.description: flagged ? qsTr("%1, %2, %3, flagged").arg(back).arg(page).arg(dueText)
                                    : qsTr("%1, %2, %3").arg(back).arg(page).arg(dueText)
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
    component Cell: Txt {
        anchors.verticalCenter: parent.verticalCenter
        size: 12
        color: Theme.ink2
    }
    contentItem: Item {
        opacity: row.suspended ? 0.6 : 1

        Check {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            checked: row.selected
            focusPolicy: Qt.NoFocus
            Accessible.name: qsTr("Pick %1").arg(row.front)
            onToggled: {
                row.pick(false);
                checked = Qt.binding(() => row.selected);
            }
        }
        Icon {
            x: 40
            anchors.verticalCenter: parent.verticalCenter
            name: row.kind === "cloze" ? "cloze" : row.kind === "multipleChoice" ? "list" : "study"
            size: 16
            color: Theme.ink3
        }
        Cell {
            x: row.columns.front
            width: row.columns.frontWidth
            text: row.front
            size: 13
            weight: 600
            color: Theme.ink
        }
        Cell {
            x: row.columns.back
            width: row.columns.backWidth
            text: row.back
            size: 13
        }
        Cell {
            visible: row.columns.wide
            x: row.columns.page
            width: row.columns.pageWidth
            text: row.page
        }
        Icon {
            visible: row.flagged
            x: row.columns.flag
            anchors.verticalCenter: parent.verticalCenter
            name: "flag"
            size: 16
            color: Theme.warn
        }
        Cell {
            x: row.columns.due
            width: row.columns.dueWidth
            text: row.dueText
            weight: row.isDue ? 600 : 400
            color: row.isDue ? Theme.accentText : Theme.ink2
        }
        Cell {
            x: row.columns.recall
            width: row.columns.recallWidth
            text: row.recallText === "" ? "–" : row.recallText
            weight: 600
            color: row.recallText === "" ? Theme.ink3 : Theme.ink2
        }
        Cell {
            visible: row.columns.wide
            x: row.columns.lasts
            width: row.columns.lastsWidth
            text: row.stability === "" ? "–" : row.stability
            color: Theme.ink3
        }
        IconButton {
            x: row.columns.more
            anchors.verticalCenter: parent.verticalCenter
            iconName: "more"
            label: qsTr("More for %1").arg(row.front)
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
