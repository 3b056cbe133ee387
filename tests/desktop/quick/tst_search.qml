import QtQuick
import QtTest
import Tessary.Search

ScreenTest {
    id: test
    name: "Search"

    property string opened

    Component {
        id: sheet
        SearchSheet {
            onOpenPage: (place, page) => test.opened = place + "/" + page
        }
    }

    function show() {
        const shown = createTemporaryObject(sheet, this, { desk: rig.desk })
        opened = ""
        shown.show()
        tryVerify(() => shown.opened)
        return shown
    }

    /// Until all that was typed has been looked for.
    function look(shown, text) {
        type(text)
        tryVerify(() => !shown.search.searching)
    }

    function test_typed_words_lead_to_a_page_by_keys_alone() {
        const botany = rig.addNotebook("Botany")
        rig.addPage(botany, "Moss", "Grows without roots")
        const fern = rig.addPage(botany, "Fern", "Has roots and fronds")
        rig.addPage("", "Stone", "")
        const shown = show()
        look(shown, "roots")
        tryCompare(shown, "count", 2)
        tryCompare(shown, "note", "2 pages")
        keyClick(Qt.Key_Space)
        look(shown, "frond")
        tryCompare(shown, "count", 1)
        find("Fern, Botany")
        keyClick(Qt.Key_Return)
        compare(opened, botany + "/" + fern)
        tryVerify(() => !shown.visible)
    }

    function test_up_and_down_stay_within_what_was_found() {
        for (const title of ["Tea one", "Tea two", "Tea three"])
            rig.addPage("", title, "")
        const shown = show()
        keyClick(Qt.Key_Return)
        compare(opened, "")
        look(shown, "tea")
        tryCompare(shown, "count", 3)
        compare(shown.currentIndex, 0)
        keyClick(Qt.Key_Up)
        compare(shown.currentIndex, 0)
        for (let i = 0; i < 5; ++i)
            keyClick(Qt.Key_Down)
        compare(shown.currentIndex, 2)
        keyClick(Qt.Key_PageUp)
        compare(shown.currentIndex, 0)
        look(shown, "x")
        tryCompare(shown, "count", 0)
        find("No page holds all of these words.")
        keyClick(Qt.Key_Escape)
        tryVerify(() => !shown.visible)
        compare(opened, "")
    }

    function test_a_click_opens_and_the_next_search_begins_anew() {
        const page = rig.addPage("", "Tea", "with milk")
        const shown = show()
        look(shown, "milk")
        click("Tea, Loose pages")
        compare(opened, "loose/" + page)
        tryVerify(() => !shown.visible)
        shown.show()
        tryVerify(() => shown.opened)
        compare(shown.count, 0)
        compare(shown.text, "")
    }
}
