import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Shell
import Tessary.Desk
import Tessary.Shelf
import Tessary.Pages
import Tessary.Review
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
    visible: true
    title: qsTr("Tessary")
    color: Theme.desk

    readonly property bool reviewing: navigator.screen === "review"

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

    Component.onCompleted: {
        if (startAt === "review")
            navigator.openReview("")
        if (desk.problems.length > 0)
            unreadable.open()
    }

    Navigator { id: navigator }

    Connections {
        target: window.desk
        function onRefused(sentence) { toasts.show(sentence, "", null) }
    }

    Shortcut {
        sequences: ["Alt+Left", "Back"]
        enabled: navigator.canGoBack
        onActivated: navigator.goBack()
    }
    Shortcut {
        sequence: "Ctrl+R"
        enabled: !window.reviewing
        onActivated: navigator.openReview("")
    }
    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: window.close()
    }

    Shortcut {
        sequence: "Ctrl+,"
        enabled: !window.reviewing && navigator.screen !== "settings"
        onActivated: navigator.openSettings()
    }

    // Both go on while other screens are shown.
    LibraryExchangeModel {
        id: libraryExchange
        desk: window.desk
        onFinished: sentence => toasts.show(sentence, "", null)
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
        folded: navigator.screen === "pages" || window.width < 1000
    }

    Loader {
        id: content
        anchors {
            left: sidebar.right
            right: parent.right
            top: parent.top
            bottom: parent.bottom
        }
        focus: true
        sourceComponent: navigator.screen === "shelf" ? shelf
                       : navigator.screen === "pages" ? pages
                       : navigator.screen === "study" ? study
                       : navigator.screen === "trash" ? trash
                       : navigator.screen === "settings" ? settings : review
        onLoaded: (item as Item).forceActiveFocus()
    }

    Component {
        id: shelf
        Paper {
            ShelfScreen {
                anchors.fill: parent
                desk: window.desk
                onOpenNotebook: id => navigator.openPlace(id)
                onStartReview: navigator.openReview("")
            }
        }
    }
    Component {
        id: pages
        PagesScreen {
            desk: window.desk
            place: navigator.place
            page: navigator.page
            onOpenPage: id => navigator.showPage(id)
            onReview: id => navigator.openReview(id)
            onTold: sentence => toasts.show(sentence, "", null)
        }
    }
    Component {
        id: study
        Paper {
            StudyScreen {
                anchors.fill: parent
                desk: window.desk
                onReview: navigator.openReview("")
                onOpenNotebook: id => navigator.openPlace(id)
            }
        }
    }
    Component {
        id: trash
        Paper {
            TrashScreen {
                anchors.fill: parent
                desk: window.desk
            }
        }
    }
    Component {
        id: settings
        Paper {
            SettingsScreen {
                anchors.fill: parent
                desk: window.desk
                pane: navigator.place
                exchange: libraryExchange
                care: libraryCare
            }
        }
    }
    Component {
        id: review
        ReviewScreen {
            desk: window.desk
            page: navigator.page
            onClosed: navigator.goBack()
            onOpenPage: id => navigator.openPage("all", id)
        }
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

    ToastHost {
        id: toasts
        anchors.fill: parent
    }
}
