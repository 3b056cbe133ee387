import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Shell
import Tessary.Desk
import Tessary.Generation
import Tessary.Search
import Tessary.Settings

/// The window: navigation on the desk, and the sheet of paper that is worked on.
ApplicationWindow {
    id: window

    required property Desk desk
    property string startAt: ""

    width: 1280
    height: 800
    minimumWidth: 900
    minimumHeight: 600
    visible: false  // until it is where it was
    title: qsTr("Tessary")
    color: Theme.desk

    readonly property bool reviewing: navigator.screen === "review"
    property bool closesAnyway: false

    Binding {
        target: Theme
        property: "dark"
        value: window.desk.theme === "dark"
               || (window.desk.theme === "system" && window.systemIsDark)
    }
    Binding {
        target: Theme
        property: "reduceMotion"
        value: window.desk.reduceMotion
    }
    readonly property bool systemIsDark: systemPalette.window.hslLightness < 0.5
    SystemPalette { id: systemPalette }

    property color accent: notebookAccent.known ? notebookAccent.color : Theme.defaultAccent
    Behavior on accent { ColorAnimation { duration: Theme.slide } }
    Binding {
        target: Theme
        property: "accent"
        value: window.accent
    }
    NotebookAccent {
        id: notebookAccent
        desk: window.desk
        place: navigator.place
        page: navigator.page
    }

    Component.onCompleted: {
        memory.restore(window)
        if (startAt === "review")
            navigator.openReview("")
        if (desk.problems.length > 0)
            unreadable.open()
    }

    onClosing: close => {
        memory.store()
        const problem = closesAnyway ? "" : desk.closeLibrary()
        close.accepted = problem === ""
        if (problem !== "")
            unsaved.tell(problem)
    }

    Navigator { id: navigator }
    WindowMemory {
        id: memory
        desk: window.desk
        navigator: navigator
    }

    GenerationModel {
        id: generation
        desk: window.desk
        onTold: sentence => toasts.show(sentence, "", null)
        onEnded: {
            if (generationSheet.opened || phase === GenerationModel.Cancelled)
                return
            if (phase === GenerationModel.Done)
                toasts.show(outcome, qsTr("Undo"), () => generation.undoAll())
            else
                toasts.show(outcome, qsTr("Show"), () => generationSheet.open())
        }
    }

    Connections {
        target: window.desk
        function onRefused(sentence) { toasts.show(sentence, "", null) }
        function onUndoable(sentence) { toasts.show(sentence, qsTr("Undo"), () => window.desk.undo()) }
    }

    WindowCommands {
        id: commandList
        desk: window.desk
        navigator: navigator
        sidebarFolded: memory.sidebarFolded
        hasPage: content.hasPage
        exchangeIsFree: !libraryExchange.busy
        onPaletteAsked: palette.show()
        onSearchAsked: search.show()
        onNotebookAsked: content.newNotebook()
        onPageAsked: content.newPage()
        onGenerationAsked: content.generateCards()
        onExportAsked: kind => exchangeDialogs.askExport(kind)
        onImportAsked: kind => exchangeDialogs.askImport(kind)
        onBackupAsked: libraryExchange.backUp()
        onFoldAsked: memory.sidebarFolded = !memory.sidebarFolded
        onThemeAsked: theme => window.desk.theme = theme
        onQuitAsked: window.close()
        onPageChosen: (place, page) => navigator.openPage(place, page)
        onNotebookChosen: notebook => navigator.openPlace(notebook)
    }
    CommandKeys { commands: commandList }

    // Both go on while other screens are shown.
    LibraryExchangeModel {
        id: libraryExchange
        desk: window.desk
        onFinished: sentence => toasts.show(sentence, "", null)
    }
    ExchangeDialogs {
        id: exchangeDialogs
        exchange: libraryExchange
    }
    LibraryCareModel {
        id: libraryCare
        desk: window.desk
    }

    Sidebar {
        id: sidebar
        anchors { left: parent.left; top: parent.top; bottom: parent.bottom }
        visible: !window.reviewing
        width: visible ? implicitWidth : 0
        desk: window.desk
        navigator: navigator
        generation: generation
        onOpenGeneration: generationSheet.open()
        foldedByUser: memory.sidebarFolded
        foldable: navigator.screen !== "pages" && window.width >= 1000
        onSearch: search.show()
        onFold: commandList.foldAsked()
    }

    WindowScreens {
        id: content
        anchors {
            left: sidebar.right
            right: parent.right
            top: parent.top
            bottom: parent.bottom
        }
        desk: window.desk
        navigator: navigator
        untouched: sidebar.untouched
        exchange: libraryExchange
        care: libraryCare
        commands: commandList.commands
        onWelcomeAsked: sidebar.makeWelcomeNotebook()
        onGenerate: (page, selection) => generationSheet.openFor(page, selection)
        onTold: sentence => toasts.show(sentence, "", null)
    }

    Sheet {
        id: unreadable
        sheetWidth: 560
        iconName: "alert"
        title: qsTr("Not everything could be read")
        rejectText: qsTr("Go on")
        Repeater {
            model: window.desk.problems
            delegate: Txt {
                required property string modelData
                text: modelData
                wrap: true
                Layout.fillWidth: true
            }
        }
    }

    GenerationSheet {
        id: generationSheet
        objectName: "generation"
        desk: window.desk
        generation: generation
        onOpenSettings: navigator.openSettings("ai")
    }
    ClosingSheet {
        id: unsaved
        objectName: "unsaved"
        onAccepted: window.close()
        onCloseAnyway: {
            window.closesAnyway = true
            window.close()
        }
    }
    SearchSheet {
        id: search
        objectName: "search"
        desk: window.desk
        onOpenPage: (place, page) => navigator.openPage(place, page)
    }
    PaletteSheet {
        id: palette
        objectName: "palette"
        commands: commandList
    }
    // The window comes first, then the search is made ready.
    Timer {
        interval: 1500
        running: window.visible
        onTriggered: search.warm()
    }

    ToastHost {
        id: toasts
        anchors.fill: parent
    }
}
