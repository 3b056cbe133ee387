import QtQuick
import Tessary.Kit

/// What the columns of the list are.
Item {
    id: head

    required property DeckColumns columns

    component Head: Txt {
        anchors.verticalCenter: parent.verticalCenter
        size: 12
        weight: 500
        color: Theme.ink3
    }

    Head { x: head.columns.front; text: qsTr("Front") }
    Head { x: head.columns.back; text: qsTr("Back") }
    Head { visible: head.columns.wide; x: head.columns.page; text: qsTr("Page") }
    Head { x: head.columns.due; text: qsTr("Due") }
    Head { x: head.columns.recall; text: qsTr("Recall") }
    Head { visible: head.columns.wide; x: head.columns.lasts; text: qsTr("Lasts") }
}
