import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Dialogs
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages

/// The open page: where it stands, title, tags and text, all to be written in.
FocusScope {
    id: sheet

    required property PageModel page
    readonly property alias selection: body.selectedText
    signal open(string id)
    signal told(string sentence)
    signal generate()

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 56
            Layout.leftMargin: 32
            Layout.rightMargin: 16
            spacing: 4
            Flow {
                Layout.fillWidth: true
                spacing: 4
                Repeater {
                    model: sheet.page.path
                    delegate: PushButton {
                        required property var modelData
                        kind: "ghost"
                        controlSize: 28
                        text: modelData.title === "" ? qsTr("Untitled") : modelData.title
                        onClicked: sheet.open(modelData.pageId)
                    }
                }
                Txt {
                    text: qsTr("Edited %1").arg(sheet.page.edited)
                    size: 12
                    color: Theme.ink3
                    height: 28
                    verticalAlignment: Text.AlignVCenter
                }
            }
            IconButton {
                iconName: "star"
                label: sheet.page.favorite ? qsTr("Take out of the favorites") : qsTr("Add to the favorites")
                checkable: true
                checked: sheet.page.favorite
                onClicked: sheet.page.favorite = !sheet.page.favorite
            }
            IconButton {
                iconName: "clip"
                label: qsTr("Attach a PDF")
                onClicked: files.open()
            }
            IconButton {
                iconName: "more"
                label: qsTr("More")
                onClicked: menu.popup()
                PopupMenu {
                    id: menu
                    PopupMenuItem {
                        text: qsTr("Generate cards…")
                        iconName: "make"
                        onTriggered: sheet.generate()
                    }
                    PopupMenuItem {
                        text: sheet.page.archived ? qsTr("Take out of the archive") : qsTr("Archive")
                        iconName: "archive"
                        onTriggered: sheet.page.archived = !sheet.page.archived
                    }
                    PopupMenuItem {
                        text: qsTr("Move to the Trash")
                        iconName: "trash"
                        danger: true
                        onTriggered: sheet.page.remove()
                    }
                }
            }
        }
        Divider { Layout.fillWidth: true }

        ScrollView {
            id: scroll
            Layout.fillWidth: true
            Layout.fillHeight: true
            contentWidth: availableWidth
            clip: true

            ColumnLayout {
                width: Math.min(scroll.availableWidth - 64, 720)
                x: 32
                spacing: 12

                TextField {
                    id: title
                    Layout.fillWidth: true
                    Layout.topMargin: 20
                    leftPadding: 0
                    background: null
                    placeholderText: qsTr("Untitled")
                    placeholderTextColor: Theme.ink3
                    color: Theme.ink
                    selectionColor: Theme.highlight
                    selectedTextColor: Theme.ink
                    font.family: Theme.display
                    font.pixelSize: 32
                    font.weight: Font.Bold
                    font.letterSpacing: -0.6
                    readOnly: sheet.page.readOnly
                    Accessible.name: qsTr("Title")
                    onTextEdited: sheet.page.title = text
                    onAccepted: body.forceActiveFocus()
                }

                Flow {
                    Layout.fillWidth: true
                    spacing: 8
                    Repeater {
                        model: sheet.page.tags
                        delegate: Chip {
                            required property string modelData
                            text: modelData
                            closable: true
                            onClosed: sheet.page.removeTag(modelData)
                        }
                    }
                    Repeater {
                        model: sheet.page.attachments
                        delegate: Chip {
                            required property string modelData
                            text: modelData
                            iconName: "clip"
                        }
                    }
                    TextField {
                        id: newTag
                        width: 96
                        height: 28
                        leftPadding: 4
                        background: null
                        placeholderText: qsTr("+ Tag")
                        placeholderTextColor: Theme.ink3
                        color: Theme.ink
                        font.family: Theme.ui
                        font.pixelSize: 13
                        Accessible.name: qsTr("New tag")
                        onAccepted: {
                            sheet.page.addTag(text)
                            clear()
                        }
                    }
                }

                TextArea {
                    id: body
                    Layout.fillWidth: true
                    Layout.bottomMargin: 64
                    Layout.minimumHeight: Math.max(200, scroll.availableHeight - 180)
                    leftPadding: 0
                    background: null
                    focus: true
                    wrapMode: TextEdit.Wrap
                    textFormat: TextEdit.PlainText
                    persistentSelection: true
                    placeholderText: qsTr("Write. “Question :: Answer” becomes a card.")
                    placeholderTextColor: Theme.ink3
                    color: Theme.ink
                    selectionColor: Theme.highlight
                    selectedTextColor: Theme.ink
                    font.family: Theme.ui
                    font.pixelSize: 15
                    readOnly: sheet.page.readOnly
                    Accessible.name: qsTr("Text of the page")
                    onTextChanged: if (activeFocus) sheet.page.body = text
                }
            }
        }
    }

    // What is typed goes to the page, what the page holds comes back only when it was changed elsewhere.
    Connections {
        target: sheet.page
        function onChanged() { sheet.take() }
        function onPageIdChanged() { sheet.take() }
    }
    Component.onCompleted: take()
    function take() {
        if (title.text !== page.title) title.text = page.title
        if (body.text !== page.body) body.text = page.body
    }

    FileDialog {
        id: files
        title: qsTr("Attach a PDF")
        nameFilters: [qsTr("PDF files (*.pdf)")]
        onAccepted: sheet.page.attach(selectedFile)
    }
}
