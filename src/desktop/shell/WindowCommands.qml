import QtQuick
import Tessary.Kit
import Tessary.Search
import Tessary.Shell

/// All that the window can do by name or by key; each key stands here once.
CommandPalette {
    id: commands

    required property Navigator navigator
    property bool sidebarFolded: false
    /// A page is on the sheet.
    property bool hasPage: false
    /// No export or import goes on.
    property bool exchangeIsFree: true
    signal paletteAsked()
    signal searchAsked()
    signal notebookAsked()
    signal pageAsked()
    signal generationAsked()
    signal exportAsked(string kind)
    signal importAsked(string kind)
    signal backupAsked()
    signal foldAsked()
    signal themeAsked(string theme)
    signal quitAsked()

    readonly property bool reviewing: navigator.screen === "review"
    readonly property bool onShelf: navigator.screen === "shelf"
    /// The cards of the notebook that is shown, else all.
    readonly property string deckHere: navigator.screen !== "pages" || navigator.place === "favorites"
                                       || navigator.place === "archive" ? "all" : navigator.place

    Command {
        title: qsTr("Commands")
        keys: ["Ctrl+K", "Ctrl+Shift+P"]
        listed: false
        onTriggered: commands.paletteAsked()
    }
    Command {
        title: qsTr("Search pages")
        keywords: qsTr("find text tags titles")
        iconName: "search"
        keys: ["Ctrl+Shift+F"]
        onTriggered: commands.searchAsked()
    }
    Command {
        title: qsTr("New page")
        keywords: qsTr("write note add create")
        iconName: "pen"
        // On the shelf Ctrl+N makes a notebook, in a deck a card.
        keys: commands.onShelf || commands.navigator.screen === "deck" ? ["Ctrl+Alt+N"] : ["Ctrl+N", "Ctrl+Alt+N"]
        onTriggered: commands.pageAsked()
    }
    Command {
        title: qsTr("New notebook")
        keywords: qsTr("add create cover")
        iconName: "plus"
        keys: commands.onShelf ? ["Ctrl+N", "Ctrl+Shift+N"] : ["Ctrl+Shift+N"]
        onTriggered: commands.notebookAsked()
    }
    Command {
        title: qsTr("Generate cards for this page…")
        keywords: qsTr("make questions ai flashcards")
        iconName: "make"
        enabled: commands.hasPage
        onTriggered: commands.generationAsked()
    }
    Command {
        title: qsTr("Review all due cards")
        keywords: qsTr("study learn start cards")
        iconName: "study"
        keys: ["Ctrl+R"]
        enabled: !commands.reviewing
        onTriggered: commands.navigator.openReview("")
    }
    Command {
        title: qsTr("Go to Today")
        keywords: qsTr("start home greeting streak exams")
        iconName: "today"
        keys: ["Ctrl+1"]
        onTriggered: commands.navigator.openToday()
    }
    Command {
        title: qsTr("Go to All Notes")
        keywords: qsTr("shelf notebooks covers")
        iconName: "shelf"
        keys: ["Ctrl+2"]
        onTriggered: commands.navigator.openShelf()
    }
    Command {
        title: qsTr("Go to all pages")
        keywords: qsTr("list tree")
        iconName: "page"
        keys: ["Ctrl+3"]
        onTriggered: commands.navigator.openPlace("all")
    }
    Command {
        title: qsTr("Go to Favorites")
        keywords: qsTr("stars")
        iconName: "star"
        keys: ["Ctrl+4"]
        onTriggered: commands.navigator.openPlace("favorites")
    }
    Command {
        title: qsTr("Go to Archive")
        iconName: "archive"
        keys: ["Ctrl+5"]
        onTriggered: commands.navigator.openPlace("archive")
    }
    Command {
        title: qsTr("Go to Study")
        keywords: qsTr("due cards")
        iconName: "study"
        keys: ["Ctrl+6"]
        onTriggered: commands.navigator.openStudy()
    }
    Command {
        title: qsTr("Open the deck")
        keywords: qsTr("all cards list flashcards browse")
        iconName: "list"
        enabled: !commands.reviewing && commands.navigator.screen !== "deck"
        onTriggered: commands.navigator.openDeck(commands.deckHere)
    }
    Command {
        title: qsTr("Go to Trash")
        keywords: qsTr("deleted restore")
        iconName: "trash"
        keys: ["Ctrl+7"]
        onTriggered: commands.navigator.openTrash()
    }
    Command {
        title: qsTr("Settings")
        keywords: qsTr("preferences options engine keys backup export import")
        iconName: "settings"
        keys: ["Ctrl+,"]
        enabled: !commands.reviewing
        onTriggered: commands.navigator.openSettings()
    }
    Command {
        title: qsTr("Export all pages as JSON…")
        keywords: qsTr("save backup copy")
        iconName: "upload"
        enabled: commands.exchangeIsFree
        onTriggered: commands.exportAsked("json")
    }
    Command {
        title: qsTr("Export all pages as Markdown…")
        keywords: qsTr("save md text document")
        iconName: "upload"
        enabled: commands.exchangeIsFree
        onTriggered: commands.exportAsked("markdown")
    }
    Command {
        title: qsTr("Export all cards…")
        keywords: qsTr("save deck flashcards")
        iconName: "upload"
        enabled: commands.exchangeIsFree
        onTriggered: commands.exportAsked("deck")
    }
    Command {
        title: qsTr("Import notes…")
        keywords: qsTr("add folder markdown text")
        iconName: "download"
        enabled: commands.exchangeIsFree
        onTriggered: commands.importAsked("notes")
    }
    Command {
        title: qsTr("Import backup…")
        keywords: qsTr("restore json bring back pages")
        iconName: "download"
        enabled: commands.exchangeIsFree
        onTriggered: commands.importAsked("json")
    }
    Command {
        title: qsTr("Import cards…")
        keywords: qsTr("add deck flashcards csv")
        iconName: "download"
        enabled: commands.exchangeIsFree
        onTriggered: commands.importAsked("deck")
    }
    Command {
        title: qsTr("Back up now")
        keywords: qsTr("save copy backup")
        iconName: "restore"
        enabled: commands.exchangeIsFree
        onTriggered: commands.backupAsked()
    }
    Command {
        title: qsTr("Go back")
        keywords: qsTr("previous")
        iconName: "left"
        keys: ["Alt+Left", "Back"]
        enabled: commands.navigator.canGoBack
        onTriggered: commands.navigator.goBack()
    }
    Command {
        title: Theme.dark ? qsTr("Use the light theme") : qsTr("Use the dark theme")
        keywords: qsTr("toggle theme light dark colors")
        iconName: Theme.dark ? "today" : "moon"
        keys: ["Ctrl+Shift+L"]
        onTriggered: commands.themeAsked(Theme.dark ? "light" : "dark")
    }
    Command {
        title: commands.sidebarFolded ? qsTr("Unfold the sidebar") : qsTr("Fold the sidebar")
        keywords: qsTr("toggle navigation rail hide show")
        iconName: "sidebar"
        keys: ["F9"]
        onTriggered: commands.foldAsked()
    }
    Command {
        title: qsTr("Quit")
        keywords: qsTr("close exit leave")
        iconName: "close"
        keys: ["Ctrl+Q"]
        onTriggered: commands.quitAsked()
    }
}
