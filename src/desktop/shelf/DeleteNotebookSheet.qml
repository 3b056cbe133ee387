import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Shelf

/// Asks before a notebook goes, and what becomes of its pages.
Sheet {
    id: sheet

    required property ShelfModel shelf
    property string notebookId
    property string name
    property int pages: 0
    property string pagesText
    property bool toTrash: false

    function ask(id: string, name: string, pages: int, pagesText: string) {
        sheet.notebookId = id;
        sheet.name = name;
        sheet.pages = pages;
        sheet.pagesText = pagesText;
        sheet.toTrash = false;
        sheet.open();
    }

    title: qsTr("Delete “%1”?").arg(name)
    subtitle: pages > 0 ? qsTr("It has %1.").arg(pagesText) : qsTr("It has no pages.")
    iconName: "trash"
    sheetWidth: 480
    danger: true
    acceptText: qsTr("Delete notebook")
    onAccepted: sheet.shelf.remove(sheet.notebookId, sheet.toTrash)

    Choice {
        visible: sheet.pages > 0
        Layout.fillWidth: true
        model: [qsTr("Keep them as loose pages"), qsTr("Move them to the Trash")]
        currentIndex: sheet.toTrash ? 1 : 0
        Accessible.name: qsTr("What becomes of the pages")
        onActivated: index => sheet.toTrash = index === 1
    }
    Txt {
        visible: sheet.pages > 0
        wrap: true
        color: Theme.ink2
        text: sheet.toTrash ? qsTr("The pages can be restored from the Trash for 30 days, without the notebook.")
                            : qsTr("The pages keep their cards and stand at the end of the shelf.")
        Layout.fillWidth: true
    }
    Txt {
        wrap: true
        color: Theme.ink2
        text: qsTr("The notebook's cover and its exams are deleted for good.")
        Layout.fillWidth: true
    }
}
