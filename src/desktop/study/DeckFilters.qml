import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Study

/// What narrows and orders the list; the states tell what the deck is made of.
ColumnLayout {
    id: filters

    required property DeckModel deck
    readonly property Item searchField: search

    function showAll() {
        search.clear();
        kind.currentIndex = 0;
        filters.deck.kind = "";
        filters.deck.state = "any";
    }

    spacing: 12

    RowLayout {
        spacing: 8
        Layout.fillWidth: true
        SearchField {
            id: search
            placeholderText: qsTr("Search cards and pages")
            keyText: qsTr("Ctrl F")
            Layout.fillWidth: true
            Layout.maximumWidth: 360
            onTextChanged: filters.deck.search = text
        }
        Item { Layout.fillWidth: true }
        Dropdown {
            id: kind
            readonly property var kinds: ["", "basic", "cloze", "multipleChoice"]
            model: [qsTr("All kinds"), qsTr("Basic"), qsTr("Cloze"), qsTr("Multiple choice")]
            implicitWidth: 160
            Accessible.name: qsTr("Kind")
            onActivated: index => filters.deck.kind = kinds[index]
        }
        Dropdown {
            readonly property var orders: ["due", "newest", "page", "difficulty"]
            model: [qsTr("Due first"), qsTr("Newest first"), qsTr("By page"), qsTr("Hardest first")]
            implicitWidth: 160
            Accessible.name: qsTr("Order")
            onActivated: index => filters.deck.order = orders[index]
        }
    }
    Flow {
        spacing: 8
        Layout.fillWidth: true
        Accessible.role: Accessible.Grouping
        Accessible.name: qsTr("Show")
        Repeater {
            model: [
                { state: "any", text: qsTr("All"), count: filters.deck.total, tone: Theme.ink2 },
                { state: "due", text: qsTr("Due"), count: filters.deck.due, tone: Theme.accentText },
                { state: "new", text: qsTr("New"), count: filters.deck.fresh, tone: Theme.info },
                { state: "learning", text: qsTr("Learning"), count: filters.deck.learning, tone: Theme.ink2 },
                { state: "suspended", text: qsTr("Suspended"), count: filters.deck.suspended, tone: Theme.ink2 },
                { state: "flagged", text: qsTr("Flagged"), count: filters.deck.flagged, tone: Theme.warn },
                { state: "leech", text: qsTr("Often forgotten"), count: filters.deck.leeches, tone: Theme.bad }
            ]
            delegate: FilterChip {
                required property var modelData
                text: modelData.text
                count: modelData.count
                tone: count > 0 ? modelData.tone : Theme.ink3
                current: filters.deck.state === modelData.state
                visible: count > 0 || current || modelData.state === "any" || modelData.state === "due"
                onClicked: filters.deck.state = modelData.state
            }
        }
    }
}
