import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Shelf

/// Makes a notebook, or gives one another name and look; the cover at the left shows how it will be.
Sheet {
    id: sheet

    required property ShelfModel shelf
    signal made(string id)

    /// A new one when `id` is empty.
    function edit(id: string) {
        draft.begin(id);
        sheet.open();
        nameField.forceActiveFocus();
    }

    title: draft.notebookId === "" ? qsTr("New notebook") : qsTr("Rename and restyle")
    iconName: "book"
    acceptText: draft.notebookId === "" ? qsTr("Create notebook") : qsTr("Save")
    acceptEnabled: draft.canSave
    note: draft.colorIsValid ? "" : qsTr("A colour is six hex digits, as in #4F7F57.")
    onAccepted: sheet.made(draft.save())

    NotebookDraft {
        id: draft
        shelf: sheet.shelf
    }
    FileDialog {
        id: pictures
        title: qsTr("Choose a picture for the cover")
        acceptLabel: qsTr("Choose")
        nameFilters: [draft.pictureFilter]
        onAccepted: draft.chooseCoverImage(selectedFile)
    }

    RowLayout {
        spacing: 28
        Layout.fillWidth: true

        CoverItem {
            Layout.preferredWidth: 144
            Layout.preferredHeight: 190
            Layout.alignment: Qt.AlignTop
            Layout.leftMargin: 4
            notebookId: draft.notebookId
            title: draft.name
            subtitle: draft.subtitle
            emoji: draft.emoji
            color: draft.shownColor
            accent: draft.accent
            material: draft.material
            pattern: draft.pattern
            labelStyle: draft.labelStyle
            band: draft.band
            ribbon: draft.ribbon
            coverImage: draft.coverImage
            dark: Theme.dark
            Accessible.role: Accessible.Graphic
            Accessible.name: qsTr("Preview of the cover")
        }

        ColumnLayout {
            spacing: 12
            Layout.fillWidth: true

            FormRow {
                label: qsTr("Name")
                Field {
                    id: nameField
                    Layout.fillWidth: true
                    text: draft.name
                    placeholderText: qsTr("What it is about")
                    Accessible.name: qsTr("Name")
                    onTextEdited: draft.name = text
                    onAccepted: sheet.acceptIfEnabled()
                }
            }
            FormRow {
                label: qsTr("Subtitle")
                Field {
                    Layout.fillWidth: true
                    text: draft.subtitle
                    placeholderText: qsTr("Optional")
                    Accessible.name: qsTr("Subtitle")
                    onTextEdited: draft.subtitle = text
                    onAccepted: sheet.acceptIfEnabled()
                }
            }
            FormRow {
                label: qsTr("Emoji")
                Field {
                    Layout.preferredWidth: 56
                    Layout.alignment: Qt.AlignTop
                    text: draft.emoji
                    Accessible.name: qsTr("Emoji")
                    onTextEdited: draft.emoji = text
                }
                EmojiRow {
                    Layout.fillWidth: true
                    emoji: draft.emoji
                    onPicked: emoji => draft.emoji = emoji
                }
            }
            FormRow {
                label: qsTr("Colour")
                ColorRow {
                    Layout.preferredWidth: 6 * pitch
                    color: draft.color
                    Accessible.name: qsTr("Colour")
                    onPicked: color => draft.color = color
                }
                Field {
                    Layout.preferredWidth: 92
                    Layout.alignment: Qt.AlignTop
                    text: draft.color
                    invalid: !draft.colorIsValid
                    Accessible.name: qsTr("Colour as hex digits")
                    onTextEdited: draft.color = text
                }
                Item { Layout.fillWidth: true }
            }
            FormRow {
                label: qsTr("Picture")
                PushButton {
                    text: draft.coverImage === "" ? qsTr("Choose picture…") : qsTr("Change picture…")
                    iconName: "image"
                    onClicked: pictures.open()
                }
                PushButton {
                    visible: draft.coverImage !== ""
                    kind: "ghost"
                    text: qsTr("Remove picture")
                    onClicked: draft.removeCoverImage()
                }
                Item { Layout.fillWidth: true }
            }
            FormRow {
                label: qsTr("Material")
                lineHeight: 54
                CoverRow {
                    Layout.fillWidth: true
                    draft: draft
                    aspect: "material"
                    values: CoverChoices.materials
                    names: CoverChoices.materialNames
                    value: draft.material
                    Accessible.name: qsTr("Material")
                    onPicked: value => draft.material = value
                }
            }
            FormRow {
                label: qsTr("Pattern")
                visible: draft.coverImage === ""  // a picture takes its place
                lineHeight: 54
                CoverRow {
                    Layout.fillWidth: true
                    draft: draft
                    aspect: "pattern"
                    values: CoverChoices.patterns
                    names: CoverChoices.patternNames
                    value: draft.pattern
                    Accessible.name: qsTr("Pattern")
                    onPicked: value => draft.pattern = value
                }
            }
            FormRow {
                label: qsTr("Label")
                Choice {
                    model: CoverChoices.labelStyleNames
                    currentIndex: CoverChoices.labelStyles.indexOf(draft.labelStyle)
                    Accessible.name: qsTr("Label")
                    onActivated: index => draft.labelStyle = CoverChoices.labelStyles[index]
                }
            }
            FormRow {
                label: qsTr("Extras")
                lineHeight: 28
                Toggle {
                    text: qsTr("Band")
                    checked: draft.band
                    onToggled: draft.band = checked
                }
                Toggle {
                    text: qsTr("Ribbon")
                    checked: draft.ribbon
                    Layout.leftMargin: 16
                    onToggled: draft.ribbon = checked
                }
                Item { Layout.fillWidth: true }
            }
            FormRow {
                visible: draft.band || draft.ribbon
                lineHeight: 24
                ColorRow {
                    Layout.fillWidth: true
                    automatic: true
                    color: draft.accent
                    Accessible.name: qsTr("Colour of band and ribbon")
                    onPicked: color => draft.accent = color
                }
            }
        }
    }
}
