import QtQuick
import Tessary.Kit
import Tessary.Pages

/// Below the title: the tags of the page, and when it expires.
Flow {
    id: row

    required property PageModel page
    required property PageTags tags
    signal showAsked(string tag)
    signal expiryAsked()

    spacing: 8

    Chip {
        visible: row.page.expiryText !== ""
        text: row.page.expiryText
        iconName: "clock"
        tint: row.page.expired ? Theme.warn : "transparent"
        focusPolicy: Qt.StrongFocus
        closable: !row.page.readOnly
        onClicked: row.expiryAsked()
        onClosed: row.page.setExpiryDay("")
    }
    Repeater {
        model: row.page.tags
        delegate: Chip {
            id: chip
            required property var modelData
            text: modelData.name
            tint: modelData.color === "" ? "transparent" : modelData.color
            focusPolicy: Qt.StrongFocus
            closable: !row.page.readOnly
            onClicked: colors.openFor(chip, modelData.name, modelData.color)
            onClosed: row.page.removeTag(modelData.name)
            Keys.onMenuPressed: chip.clicked()
            TapHandler {
                acceptedButtons: Qt.RightButton
                onTapped: chip.clicked()
            }
        }
    }
    TagField {
        visible: !row.page.readOnly
        tags: row.tags
        taken: row.page.tagNames
        onAdded: tag => row.page.addTag(tag)
    }
    TagColors {
        id: colors
        tags: row.tags
        onShowAsked: tag => row.showAsked(tag)
        onRemoveAsked: tag => row.page.removeTag(tag)
    }
}
