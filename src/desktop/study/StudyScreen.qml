import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Desk
import Tessary.Study

/// How learning goes: what is due and will be, how well it is remembered, a year of reviews, and the decks.
FocusScope {
    id: screen

    required property Desk desk
    /// Of a deck; of all cards when empty.
    signal review(string place)
    signal openDeck(string place)
    signal openPages()

    readonly property bool beside: width >= 680
    readonly property bool empty: study.ready && study.cards === 0

    StudyModel {
        id: study
        desk: screen.desk
    }

    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_R && event.modifiers === Qt.NoModifier && study.due > 0;
        if (event.accepted)
            screen.review("");
    }

    RowLayout {
        id: head
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 32; topMargin: 18 }
        height: 36
        spacing: 24

        Txt {
            text: qsTr("Study")
            size: 24
            weight: 700
            Accessible.role: Accessible.Heading
        }
        Txt {
            text: screen.empty ? "" : study.summary
            color: Theme.ink2
            Layout.fillWidth: true
        }
        PushButton {
            visible: study.cards > 0
            iconName: "list"
            text: qsTr("All cards")
            onClicked: screen.openDeck("all")
        }
        PushButton {
            visible: study.cards > 0
            focus: true
            enabled: study.due > 0
            kind: "primary"
            text: study.due > 0 ? qsTr("Review %1").arg(study.due) : qsTr("Nothing is due")
            keyText: study.due > 0 ? "R" : ""
            onClicked: screen.review("")
        }
    }

    Flickable {
        id: flick
        anchors { fill: parent; topMargin: 72; bottomMargin: 1 }
        visible: study.ready && study.cards > 0
        clip: true
        contentHeight: column.implicitHeight + 28
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: Scrollbar {}

        /// Keeps what has the focus in sight.
        readonly property Item focused: Window.activeFocusItem
        onFocusedChanged: {
            if (!focused || !screen.activeFocus || !column.contains(column.mapFromItem(focused, 0, 0)))
                return;
            const top = focused.mapToItem(column, 0, 0).y;
            if (top < contentY)
                contentY = Math.max(0, top - 16);
            else if (top + focused.height > contentY + height)
                contentY = Math.min(contentHeight - height, top + focused.height + 32 - height);
        }

        ColumnLayout {
            id: column
            x: 32
            y: 8
            width: flick.width - 64
            spacing: 16

            GridLayout {
                columns: screen.beside ? 2 : 1
                columnSpacing: 16
                rowSpacing: 16
                Layout.fillWidth: true

                ChartCard {
                    id: forecastCard
                    title: qsTr("Due in the next %1 days").arg(forecast.days)
                    note: study.overdue > 0 ? qsTr("%1 overdue").arg(study.overdue) : ""
                    emptyText: study.anyReviewed ? ""
                        : qsTr("Nothing is planned yet. Once you have reviewed a card, this shows when it comes back.")
                    aside: Choice {
                        visible: study.anyReviewed
                        implicitHeight: 28
                        model: [qsTr("14"), qsTr("30")]
                        currentIndex: 1
                        Accessible.name: qsTr("Days shown")
                        onActivated: index => forecast.days = index === 0 ? 14 : 30
                    }
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 616
                    chart: ForecastChart {
                        id: forecast
                        anchors { fill: parent; topMargin: 8 }
                        study: study
                    }
                }
                ChartCard {
                    title: qsTr("How well you remember")
                    note: qsTr("Cards by chance of recall now, %")
                    noteBelow: true
                    emptyText: study.anyReviewed ? ""
                        : qsTr("Your first review shows how well your cards are remembered.")
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 344
                    Layout.minimumWidth: 272
                    chart: RecallChart {
                        anchors.fill: parent
                        study: study
                    }
                }
            }
            ChartCard {
                title: qsTr("Your year")
                note: study.heatSummary
                emptyText: study.heatSummary !== "" ? ""
                    : study.due > 0 ? qsTr("No reviews in the last year. Press R, and today's square fills.")
                    : qsTr("No reviews in the last year. Each day you review fills a square.")
                aside: HeatLegend { visible: study.heatSummary !== "" }
                Layout.fillWidth: true
                chart: YearChart {
                    anchors { left: parent.left; right: parent.right }
                    study: study
                }
            }
            DeckTable {
                decks: study.decks
                Layout.fillWidth: true
                onOpen: place => screen.openDeck(place)
                onStudy: place => screen.review(place)
            }
        }
    }

    EmptyState {
        anchors.centerIn: parent
        visible: screen.empty
        text: qsTr("There are no cards yet. Open a page, write “Question :: Answer”, and make cards from it.")
        actionText: qsTr("Open your pages")
        onAction: screen.openPages()
    }
}
