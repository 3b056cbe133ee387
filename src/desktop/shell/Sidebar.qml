import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Shell
import Tessary.Desk
import Tessary.Generation

/// Places and notebooks; a narrow rail of icons when folded.
Item {
    id: sidebar

    required property Desk desk
    required property Navigator navigator
    required property GenerationModel generation
    property bool foldedByUser: false
    /// Whether there is room for all of it.
    property bool foldable: true
    readonly property bool folded: foldedByUser || !foldable
    /// Nothing was ever written into this library.
    readonly property bool untouched: model.untouched
    signal openGeneration()
    signal search()
    signal fold()

    function makeWelcomeNotebook() { model.makeWelcomeNotebook(); }

    implicitWidth: folded ? 60 : 232
    Behavior on implicitWidth { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutQuint } }

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Navigation")

    SidebarModel {
        id: model
        desk: sidebar.desk
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: sidebar.folded ? 8 : 12
        spacing: 2

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 44
            spacing: 8
            Plim {
                size: 30
                Layout.leftMargin: sidebar.folded ? 7 : 4
            }
            Txt {
                visible: !sidebar.folded
                text: "Tessary"
                size: 18
                weight: 700
                Layout.fillWidth: true
            }
            IconButton {
                visible: !sidebar.folded
                iconName: "sidebar"
                label: qsTr("Fold the sidebar")
                onClicked: sidebar.fold()
            }
        }
        IconButton {
            visible: sidebar.foldedByUser && sidebar.foldable
            iconName: "sidebar"
            label: qsTr("Unfold the sidebar")
            Layout.alignment: Qt.AlignHCenter
            onClicked: sidebar.fold()
        }
        SidebarSearch {
            folded: sidebar.folded
            Layout.bottomMargin: 6
            onClicked: sidebar.search()
        }

        SidebarRow {
            iconName: "today"
            text: qsTr("Today")
            folded: sidebar.folded
            selected: sidebar.navigator.screen === "today"
            onClicked: sidebar.navigator.openToday()
        }
        SidebarRow {
            iconName: "shelf"
            text: qsTr("All Notes")
            folded: sidebar.folded
            selected: sidebar.navigator.screen === "shelf"
            count: model.notebooks
            onClicked: sidebar.navigator.openShelf()
        }
        SidebarRow {
            iconName: "page"
            text: qsTr("All pages")
            folded: sidebar.folded
            selected: sidebar.navigator.place === "all"
            onClicked: sidebar.navigator.openPlace("all")
        }
        SidebarRow {
            iconName: "star"
            text: qsTr("Favorites")
            folded: sidebar.folded
            selected: sidebar.navigator.place === "favorites"
            count: model.favorites
            onClicked: sidebar.navigator.openPlace("favorites")
        }
        SidebarRow {
            iconName: "archive"
            text: qsTr("Archive")
            folded: sidebar.folded
            selected: sidebar.navigator.place === "archive"
            onClicked: sidebar.navigator.openPlace("archive")
        }
        SidebarRow {
            iconName: "study"
            text: qsTr("Study")
            folded: sidebar.folded
            selected: sidebar.navigator.screen === "study" || sidebar.navigator.screen === "deck"
            count: model.due
            marked: true
            onClicked: sidebar.navigator.openStudy()
        }
        SidebarRow {
            iconName: "trash"
            text: qsTr("Trash")
            folded: sidebar.folded
            selected: sidebar.navigator.screen === "trash"
            count: model.trashed
            onClicked: sidebar.navigator.openTrash()
        }

        Txt {
            visible: !sidebar.folded && model.notebooks > 0
            text: qsTr("Notebooks")
            size: 12
            weight: 600
            color: Theme.ink3
            Layout.topMargin: 20
            Layout.bottomMargin: 4
            Layout.leftMargin: 12
        }
        Divider {
            visible: sidebar.folded && model.notebooks > 0
            Layout.fillWidth: true
            Layout.margins: 8
        }

        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 2
            model: model
            boundsBehavior: Flickable.StopAtBounds
            delegate: SidebarRow {
                required property string notebookId
                required property string name
                required property color color
                required property int due
                width: list.width
                swatch: color
                text: name
                folded: sidebar.folded
                selected: sidebar.navigator.place === notebookId
                count: due
                onClicked: sidebar.navigator.openPlace(notebookId)
            }
        }

        GenerationStatus {
            Layout.fillWidth: true
            Layout.bottomMargin: 4
            generation: sidebar.generation
            folded: sidebar.folded
            onClicked: sidebar.openGeneration()
        }
        GridLayout {
            columns: sidebar.folded ? 1 : 3
            columnSpacing: 4
            rowSpacing: 2
            PlimBadge {
                id: companion
                desk: sidebar.desk
                visible: desk.companion && (!sidebar.folded || sidebar.height >= 700)
                size: 44
                reaction: sidebar.generation.running ? "think" : "idle"
                Layout.alignment: Qt.AlignHCenter
                TapHandler { onTapped: companion.play("wave") }
            }
            SidebarRow {
                iconName: "sliders"
                text: qsTr("Settings")
                folded: sidebar.folded
                selected: sidebar.navigator.screen === "settings"
                onClicked: sidebar.navigator.openSettings()
            }
            IconButton {
                iconName: Theme.dark ? "today" : "moon"
                label: Theme.dark ? qsTr("Light theme") : qsTr("Dark theme")
                controlSize: 36
                Layout.alignment: Qt.AlignHCenter
                onClicked: sidebar.desk.theme = Theme.dark ? "light" : "dark"
            }
        }
    }
}
