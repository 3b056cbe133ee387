import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Study

/// Where the cards of a file are to stand.
Sheet {
    id: sheet

    required property DeckEditor editor
    property string pageId
    signal chosen(string page)

    function ask() {
        place.model = sheet.editor.pages();
        place.currentIndex = 0;
        sheet.pageId = place.model.length > 0 ? place.model[0].pageId : "";
        sheet.open();
        place.forceActiveFocus();
    }

    sheetWidth: 480
    iconName: "download"
    title: qsTr("Import cards")
    acceptText: qsTr("Choose a file…")
    acceptEnabled: pageId !== ""
    onAccepted: chosen(pageId)

    Txt {
        text: qsTr("A deck file is plain text: a card on each line, front and back apart by a tab. The cards come "
                   + "in as new ones.")
        wrap: true
        color: Theme.ink2
        Layout.fillWidth: true
    }
    Txt {
        text: qsTr("Page they belong to")
        size: 12
        weight: 600
        color: Theme.ink3
        Layout.bottomMargin: -8
    }
    Dropdown {
        id: place
        textRole: "title"
        valueRole: "pageId"
        Accessible.name: qsTr("Page they belong to")
        Layout.fillWidth: true
        onActivated: sheet.pageId = currentValue
    }
}
