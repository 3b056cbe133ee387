import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// All settings, pane by pane. Every change is stored as it is made.
Screen {
    id: screen

    property Desk desk
    /// The name of the pane to begin with; the first when it is none.
    property string pane
    property LibraryExchangeModel exchange
    property LibraryCareModel care
    /// Each has a title and a keyText, as the palette's commands do.
    property var commands: []

    title: qsTr("Settings")
    onPaneChanged: open(pane)
    Component.onCompleted: open(pane)

    function open(name: string) {
        panes.currentIndex = Math.max(0, names.indexOf(name));
    }
    readonly property var names: ["ai", "flashcards", "general", "backup", "library", "about"]

    /// What has the focus by keyboard is brought into view.
    function reveal(item: Item) {
        for (let above = item; above; above = above.parent) {
            if (above !== flick.contentItem)
                continue;
            const top = item.mapToItem(flick.contentItem, 0, 0).y;
            const margin = 24;
            if (top - margin < flick.contentY)
                flick.contentY = Math.max(0, top - margin);
            else if (top + item.height + margin > flick.contentY + flick.height)
                flick.contentY = Math.min(Math.max(0, flick.contentHeight - flick.height),
                                          top + item.height + margin - flick.height);
            return;
        }
    }
    Connections {
        target: screen.Window.window
        function onActiveFocusItemChanged() { screen.reveal(screen.Window.activeFocusItem) }
    }

    ExchangeDialogs {
        id: exchangeDialogs
        exchange: screen.exchange
    }
    ListModel {
        id: paneModel
        Component.onCompleted: {
            append({ name: qsTr("AI"), iconName: "make" });
            append({ name: qsTr("Flashcards"), iconName: "study" });
            append({ name: qsTr("General"), iconName: "settings" });
            append({ name: qsTr("Backup"), iconName: "restore" });
            append({ name: qsTr("Library"), iconName: "shelf" });
            append({ name: qsTr("About"), iconName: "info" });
            screen.open(screen.pane);
        }
    }

    content: RowLayout {
        anchors.fill: parent
        spacing: 24

        PaneList {
            id: panes
            focus: true
            model: paneModel
            Layout.alignment: Qt.AlignTop
            Layout.fillHeight: true
            Layout.preferredWidth: implicitWidth
            onPicked: index => {
                panes.currentIndex = index;
                flick.contentY = 0;
            }
        }
        Flickable {
            id: flick
            Layout.fillWidth: true
            Layout.fillHeight: true
            // Room for focus rings and shadows, which a clip would cut.
            Layout.leftMargin: -8
            Layout.rightMargin: -24
            Layout.topMargin: -8
            Layout.bottomMargin: -24
            clip: true
            contentHeight: body.implicitHeight + 40
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: Scrollbar {}

            Loader {
                id: body
                x: 8
                y: 8
                width: Math.min(720, flick.width - 32)
                sourceComponent: [ai, flashcards, general, backup, library, about][panes.currentIndex]
            }
        }
    }

    Component {
        id: ai
        AIPane { desk: screen.desk }
    }
    Component {
        id: flashcards
        FlashcardsPane {
            desk: screen.desk
            onOpenEngine: screen.open("ai")
        }
    }
    Component {
        id: general
        GeneralPane { desk: screen.desk }
    }
    Component {
        id: backup
        BackupPane {
            desk: screen.desk
            exchange: screen.exchange
            dialogs: exchangeDialogs
            care: screen.care
        }
    }
    Component {
        id: library
        LibraryPane {
            exchange: screen.exchange
            dialogs: exchangeDialogs
            care: screen.care
        }
    }
    Component {
        id: about
        AboutPane { commands: screen.commands }
    }
}
