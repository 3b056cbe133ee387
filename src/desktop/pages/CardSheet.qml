import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages

/// Writes a card: a new one, or one that is there.
Sheet {
    id: sheet

    required property PageDeckModel deck
    property string card

    sheetWidth: 520
    title: card === "" ? qsTr("New card") : qsTr("Edit card")
    subtitle: qsTr("Put {{double braces}} around a term for a card with a blank.")
    acceptText: card === "" ? qsTr("Add") : qsTr("Save")
    rejectText: qsTr("Cancel")
    acceptEnabled: problem === ""
    readonly property string problem: deck.problemWith(front.text, back.text)

    function openNew() {
        card = ""
        front.text = ""
        back.text = ""
        open()
        front.forceActiveFocus()
    }
    function openFor(id: string, frontText: string, backText: string) {
        card = id
        front.text = frontText
        back.text = backText
        open()
        front.forceActiveFocus()
    }
    onAccepted: card === "" ? deck.add(front.text, back.text) : deck.edit(card, front.text, back.text)

    ColumnLayout {
        Layout.fillWidth: true
        spacing: 8
        Txt {
            text: qsTr("Front")
            size: 12
            weight: 600
            color: Theme.ink3
        }
        TextBox {
            id: front
            Layout.fillWidth: true
            Layout.preferredHeight: 88
            placeholderText: qsTr("What is asked")
        }
        Txt {
            text: qsTr("Back")
            size: 12
            weight: 600
            color: Theme.ink3
        }
        TextBox {
            id: back
            Layout.fillWidth: true
            Layout.preferredHeight: 88
            placeholderText: qsTr("The answer")
        }
        Txt {
            visible: front.text !== "" && sheet.problem !== ""
            text: sheet.problem
            size: 12
            color: Theme.bad
        }
    }
}
