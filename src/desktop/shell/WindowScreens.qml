import QtQuick
import Tessary.Shell
import Tessary.Desk
import Tessary.Today
import Tessary.Shelf
import Tessary.Pages
import Tessary.Review
import Tessary.Study
import Tessary.Settings

/// The screen that the navigator is at.
Loader {
    id: screens

    required property Desk desk
    required property Navigator navigator
    required property LibraryExchangeModel exchange
    required property LibraryCareModel care
    /// Nobody has made anything in the library yet.
    property bool untouched: false
    /// Those that the settings tell the keys of.
    property var commands: []
    readonly property PagesScreen pagesScreen: item as PagesScreen
    readonly property bool hasPage: pagesScreen?.hasPage ?? false
    signal welcomeAsked()
    signal generate(string page, string selection)
    signal told(string sentence)

    signal notebookWanted()
    function newNotebook() {
        navigator.openShelf()
        screens.notebookWanted()
    }
    function newPage() {
        if (navigator.screen !== "pages" || navigator.place === "archive")
            navigator.openPlace("all")
        pagesScreen.newPage()
    }
    function generateCards() { pagesScreen.generateCards() }

    focus: true
    sourceComponent: navigator.screen === "today" ? today
                   : navigator.screen === "shelf" ? shelf
                   : navigator.screen === "pages" ? pages
                   : navigator.screen === "study" ? study
                   : navigator.screen === "deck" ? deck
                   : navigator.screen === "trash" ? trash
                   : navigator.screen === "settings" ? settings : review
    onLoaded: (item as Item).forceActiveFocus()

    Component {
        id: today
        Paper {
            TodayScreen {
                anchors.fill: parent
                desk: screens.desk
                onReview: notebook => screens.navigator.openReviewOf(notebook)
                onOpenPage: (place, id) => screens.navigator.openPage(place, id)
                onOpenShelf: screens.navigator.openShelf()
                onMakeWelcome: screens.welcomeAsked()
            }
        }
    }
    Component {
        id: shelf
        Paper {
            ShelfScreen {
                id: shelfScreen
                anchors.fill: parent
                desk: screens.desk
                untouched: screens.untouched
                onOpenNotebook: id => screens.navigator.openPlace(id)
                onStartReview: screens.navigator.openReview("")
                onWelcomeAsked: screens.welcomeAsked()
            }
            Connections {
                target: screens
                function onNotebookWanted() { shelfScreen.newNotebook() }
            }
        }
    }
    Component {
        id: pages
        PagesScreen {
            desk: screens.desk
            place: screens.navigator.place
            page: screens.navigator.page
            onOpenPage: id => screens.navigator.showPage(id)
            onReview: id => screens.navigator.openReview(id)
            onOpenDeck: screens.navigator.openDeck(screens.navigator.place)
            onGenerate: (id, selection) => screens.generate(id, selection)
            onTold: sentence => screens.told(sentence)
        }
    }
    Component {
        id: study
        Paper {
            StudyScreen {
                anchors.fill: parent
                desk: screens.desk
                onReview: place => screens.navigator.openReviewOf(place)
                onOpenDeck: place => screens.navigator.openDeck(place)
                onOpenPages: screens.navigator.openPlace("all")
            }
        }
    }
    Component {
        id: deck
        Paper {
            DeckScreen {
                anchors.fill: parent
                desk: screens.desk
                place: screens.navigator.deck
                onReview: place => screens.navigator.openReviewOf(place)
                onOpenStudy: screens.navigator.openStudy()
                onOpenPage: (place, id) => screens.navigator.openPage(place, id)
            }
        }
    }
    Component {
        id: trash
        Paper {
            TrashScreen {
                anchors.fill: parent
                desk: screens.desk
            }
        }
    }
    Component {
        id: settings
        Paper {
            SettingsScreen {
                anchors.fill: parent
                desk: screens.desk
                pane: screens.navigator.place
                exchange: screens.exchange
                care: screens.care
                commands: screens.commands
            }
        }
    }
    Component {
        id: review
        ReviewScreen {
            desk: screens.desk
            page: screens.navigator.page
            place: screens.navigator.deck
            onClosed: screens.navigator.goBack()
            onOpenPage: id => screens.navigator.openPage("all", id)
        }
    }
}
