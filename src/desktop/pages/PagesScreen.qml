import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages
import Tessary.Desk

/// A place's pages as a tree, the open page on its sheet, and the page's cards or outline beside it.
FocusScope {
    id: screen

    required property Desk desk
    required property string place
    property string page
    signal openPage(string id)
    signal review(string id)
    signal told(string sentence)
    signal openDeck()
    signal generate(string id, string selection)

    /// The page on the sheet: what was asked for; when that is gone, or nothing was, the nearest there is.
    property string shownPage
    property int shownRow: 0
    function settle() {
        if (page !== "" && tree.exists(page))
            shownPage = page;
        else if (!tree.exists(shownPage) || (page === "" && tree.rowOf(shownPage) < 0))
            shownPage = tree.pageAt(Math.min(shownRow, tree.rowCount() - 1));
        const row = tree.rowOf(shownPage);
        if (row >= 0)
            shownRow = row;
    }
    function show(id: string) {
        if (id === "")
            return;
        screen.openPage(id);
        screen.overlaid = false;
    }
    onPageChanged: settle()
    Component.onCompleted: settle()

    /// There is room for the panel beside the page; else it opens over it.
    readonly property bool wide: width >= 980
    property bool overlaid: false
    readonly property bool panelShown: current.exists && (wide ? listing.panel !== "hidden" : overlaid)
    property string face: "cards"
    function togglePanel() {
        if (!wide)
            overlaid = !overlaid;
        else
            listing.panel = listing.panel === "hidden" ? face : "hidden";
    }

    PageListing {
        id: listing
        desk: screen.desk
        onChanged: if (listing.panel !== "hidden") screen.face = listing.panel
    }
    PageTags {
        id: tags
        desk: screen.desk
    }
    function newPage() { screen.show(tree.addPage("")); }
    readonly property bool hasPage: current.exists
    function generateCards() { screen.generate(screen.shownPage, sheet.selection); }

    PageTreeModel {
        id: tree
        desk: screen.desk
        place: screen.place
        onPlaceChanged: { tag = ""; filter = ""; screen.shownRow = 0; }
        onRefreshed: screen.settle()
    }
    PageModel {
        id: current
        desk: screen.desk
        pageId: screen.shownPage
    }

    Shortcut {
        sequence: "Ctrl+\\"
        onActivated: screen.togglePanel()
    }
    Shortcut {
        sequence: "Ctrl+F"
        enabled: current.exists
        onActivated: sheet.find()
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        PageTree {
            id: side
            Layout.preferredWidth: 228
            Layout.fillHeight: true
            tree: tree
            listing: listing
            tags: tags
            current: screen.shownPage
            onOpen: id => screen.show(id)
            onOpenDeck: screen.openDeck()
            onMoveAsked: id => move.ask(id)
        }
        Surface {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.topMargin: 8
            Layout.bottomMargin: 8
            Layout.rightMargin: docked.active ? 0 : 8
            radius: 16
            elevation: 2
            fill: Theme.paper

            PageSheet {
                id: sheet
                anchors.fill: parent
                visible: current.exists
                focus: true
                desk: screen.desk
                page: current
                tree: tree
                tags: tags
                panelShown: screen.panelShown
                onOpen: id => screen.show(id)
                onPanelAsked: screen.togglePanel()
                onMoveAsked: id => move.ask(id)
                onEscaped: side.forceActiveFocus()
                onGenerate: screen.generateCards()
            }
            EmptyState {
                anchors.centerIn: parent
                visible: !current.exists
                text: screen.place === "archive" ? qsTr("Nothing is archived.")
                                                 : qsTr("There are no pages here yet.")
                actionText: screen.place === "archive" ? "" : qsTr("Write a page")
                onAction: screen.newPage()
            }
        }
        Loader {
            id: docked
            Layout.preferredWidth: 312
            Layout.fillHeight: true
            visible: active
            active: screen.panelShown && screen.wide
            sourceComponent: pagePanel
        }
    }

    MouseArea {
        anchors.fill: parent
        anchors.leftMargin: side.width
        visible: drawer.active
        onClicked: screen.overlaid = false
    }
    Loader {
        id: drawer
        readonly property bool wanted: screen.panelShown && !screen.wide
        width: 328
        height: parent.height - 16
        y: 8
        x: parent.width - (wanted ? width + 8 : -8)
        active: wanted || x < parent.width
        Behavior on x { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutQuint } }
        sourceComponent: Surface {
            elevation: 3
            radius: 16
            fill: Theme.desk
            stroke: Theme.edge
            Loader {
                anchors.fill: parent
                sourceComponent: pagePanel
            }
        }
        Shortcut {
            sequence: "Escape"
            enabled: drawer.wanted
            onActivated: screen.overlaid = false
        }
    }
    Component {
        id: pagePanel
        PagePanel {
            desk: screen.desk
            page: screen.shownPage
            face: screen.face
            onFaceAsked: face => { screen.face = face; if (screen.wide) listing.panel = face; }
            onReview: screen.review(screen.shownPage)
            onGenerate: screen.generateCards()
            onMakeCards: screen.told(current.makeCardsFromText())
            onGoTo: position => { sheet.goTo(position); screen.overlaid = false; }
            onHideAsked: screen.togglePanel()
        }
    }
    MoveSheet {
        id: move
        desk: screen.desk
        tree: tree
    }
}
