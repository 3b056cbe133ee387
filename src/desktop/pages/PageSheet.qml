import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Pages
import Tessary.Desk

/// The open page: where it stands, title, tags, files and text, all to be written in.
FocusScope {
    id: sheet

    required property Desk desk
    required property PageModel page
    readonly property alias selection: body.selectedText
    required property PageTreeModel tree
    required property PageTags tags
    property bool panelShown: false
    signal open(string id)
    signal panelAsked()
    signal moveAsked(string id)
    signal escaped()
    signal generate()

    function find() { finder.ask(body.selectedText); }
    /// Brings a place of the text into view, with the cursor at it.
    function goTo(position: int) {
        body.forceActiveFocus();
        body.cursorPosition = Math.min(position, body.length);
        const y = body.y + body.positionToRectangle(position).y;
        flick.contentY = Math.max(0, Math.min(y - 24, flick.contentHeight - flick.height));
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        PageBar {
            Layout.fillWidth: true
            Layout.preferredHeight: 56
            Layout.leftMargin: 22
            Layout.rightMargin: 16
            page: sheet.page
            panelShown: sheet.panelShown
            pinned: sheet.page.pinned
            onOpen: id => sheet.open(id)
            onAttachAsked: files.open()
            onFindAsked: sheet.find()
            onPanelAsked: sheet.panelAsked()
            onSubpageAsked: sheet.open(sheet.tree.addPage(sheet.page.pageId))
            onPinAsked: sheet.tree.setPinned(sheet.page.pageId, !sheet.page.pinned)
            onMoveAsked: sheet.moveAsked(sheet.page.pageId)
            onExpiryAsked: expiry.ask()
            onTrashAsked: sheet.tree.remove(sheet.page.pageId)
            onGenerateAsked: sheet.generate()
        }
        Divider { Layout.fillWidth: true }

        Flickable {
            id: flick
            readonly property real margin: 32
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            contentHeight: column.implicitHeight
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: Scrollbar {}

            function reveal(top: real, bottom: real) {
                if (top < contentY)
                    contentY = Math.max(0, top - 12);
                else if (bottom > contentY + height)
                    contentY = bottom - height + 12;
            }
            // Below the text is text, too.
            MouseArea {
                width: flick.width
                height: Math.max(flick.height, column.implicitHeight)
                cursorShape: Qt.IBeamCursor
                onClicked: {
                    body.forceActiveFocus(Qt.MouseFocusReason);
                    body.cursorPosition = body.length;
                }
            }
            Column {
                id: column
                x: Math.max(flick.margin, (flick.width - width) / 2)
                width: Math.min(flick.width - 2 * flick.margin, 720)
                topPadding: 24
                bottomPadding: 64
                spacing: 12

                T.TextField {
                    id: title
                    width: parent.width
                    implicitHeight: 44
                    verticalAlignment: TextInput.AlignVCenter
                    selectByMouse: true
                    color: Theme.ink
                    placeholderTextColor: Theme.ink3
                    selectionColor: Theme.highlight
                    selectedTextColor: Theme.ink
                    font.family: Theme.display
                    font.pixelSize: 32
                    font.weight: Font.Bold
                    font.letterSpacing: -0.6
                    readOnly: sheet.page.readOnly
                    Accessible.role: Accessible.EditableText
                    Accessible.name: qsTr("Title")
                    onTextEdited: sheet.page.title = text
                    onAccepted: body.forceActiveFocus()
                    Keys.onDownPressed: body.forceActiveFocus()
                    Keys.onMenuPressed: titleMenu.openAtCursor()
                    EditMenu {
                        id: titleMenu
                        editor: title
                    }
                    Txt {
                        visible: title.text === "" && title.preeditText === ""
                        height: parent.height
                        verticalAlignment: Text.AlignVCenter
                        text: qsTr("Untitled")
                        size: 32
                        weight: 700
                        color: Theme.ink3
                        Accessible.ignored: true
                    }
                }
                TagRow {
                    width: parent.width
                    page: sheet.page
                    tags: sheet.tags
                    onShowAsked: tag => sheet.tree.tag = tag
                    onExpiryAsked: expiry.ask()
                }
                PageFiles {
                    width: parent.width
                    attachments: attachments
                    readOnly: sheet.page.readOnly
                }
                T.TextArea {
                    id: body
                    /// What the page is known to hold. A mark drawn in the text counts as a change of it, too.
                    property string known
                    property bool taking: true
                    width: parent.width
                    topPadding: 4
                    implicitHeight: contentHeight + topPadding + bottomPadding
                    focus: true
                    wrapMode: TextEdit.Wrap
                    textFormat: TextEdit.PlainText
                    persistentSelection: true
                    selectByMouse: true
                    color: Theme.ink
                    selectionColor: Theme.highlight
                    selectedTextColor: Theme.ink
                    font.family: Theme.ui
                    font.pixelSize: 15
                    readOnly: sheet.page.readOnly
                    Accessible.role: Accessible.EditableText
                    Accessible.multiLine: true
                    Accessible.name: qsTr("Text of the page")
                    onTextChanged: {
                        if (taking || readOnly || text === known)
                            return;
                        known = text;
                        sheet.page.body = text;
                    }
                    onCursorRectangleChanged: {
                        if (activeFocus)
                            flick.reveal(y + cursorRectangle.y, y + cursorRectangle.y + cursorRectangle.height);
                    }
                    Keys.onEscapePressed: finder.open ? finder.close() : sheet.escaped()
                    Keys.onMenuPressed: bodyMenu.openAtCursor()
                    EditMenu {
                        id: bodyMenu
                        editor: body
                    }
                    Txt {
                        visible: body.length === 0 && body.preeditText === ""
                        y: body.topPadding
                        width: parent.width
                        text: qsTr("Write. “Question :: Answer” becomes a card.")
                        size: 15
                        wrap: true
                        color: Theme.ink3
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
    FindBar {
        id: finder
        anchors.right: parent.right
        anchors.rightMargin: 16
        y: 64
        width: Math.min(implicitWidth, parent.width - 32)
        text: look
        position: Math.max(body.selectionEnd, body.cursorPosition)
        onFoundAt: (position, length) => {
            body.select(position, position + length);
            const top = body.y + body.positionToRectangle(position).y;
            flick.reveal(top - 40, top + 48);
        }
        onClosed: body.forceActiveFocus()
    }
    PageText {
        id: look
        document: body.textDocument
        faint: Theme.ink3
        highlight: Theme.highlight
    }
    PageAttachments {
        id: attachments
        desk: sheet.desk
        pageId: sheet.page.pageId
    }
    ExpirySheet {
        id: expiry
        page: sheet.page
    }
    FileDialog {
        id: files
        title: qsTr("Attach a PDF")
        nameFilters: [qsTr("PDF files (*.pdf)")]
        onAccepted: attachments.attach(selectedFile)
    }

    // What is typed goes to the page, what the page holds comes back only when it was changed elsewhere.
    Connections {
        target: sheet.page
        function onChanged() { sheet.take(); }
        function onPageIdChanged() {
            finder.open = false;
            sheet.take();
            flick.contentY = 0;
        }
    }
    Component.onCompleted: take()
    property string taken
    function take() {
        if (title.text !== page.title)
            title.text = page.title;
        if (taken === page.pageId && body.text === page.body)
            return;
        body.taking = true;
        taken = page.pageId;
        body.known = page.body;
        look.load(body.known);
        body.taking = false;
    }
}
