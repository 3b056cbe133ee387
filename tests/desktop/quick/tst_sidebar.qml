import QtQuick
import QtTest
import Tessary.Generation
import Tessary.Shell

ScreenTest {
    id: test
    name: "Sidebar"

    property string notebook

    Navigator { id: way }
    GenerationModel {
        id: making
        desk: rig.desk
    }
    Component {
        id: sidebar
        Sidebar {
            height: test.height
            desk: rig.desk
            navigator: way
            generation: making
        }
    }

    function prepare() {
        test.notebook = rig.addNotebook("Botany")
        rig.addCard(rig.addPage(notebook, "Leaves", ""), "Green?", "Yes")
        way.openPage("none", "")
    }
    function show(properties) {
        const shown = createTemporaryObject(sidebar, this, properties ?? {})
        find("Navigation")
        return shown
    }

    function test_rows_lead_to_places_data() {
        return [
            { tag: "Today", row: "Today", screen: "today", place: "" },
            { tag: "All Notes", row: "All Notes, 1", screen: "shelf", place: "" },
            { tag: "All pages", row: "All pages", screen: "pages", place: "all" },
            { tag: "Favorites", row: "Favorites", screen: "pages", place: "favorites" },
            { tag: "Archive", row: "Archive", screen: "pages", place: "archive" },
            { tag: "Study", row: "Study, 1", screen: "study", place: "" },
            { tag: "Trash", row: "Trash", screen: "trash", place: "" },
            { tag: "a notebook", row: "Botany, 1", screen: "pages", place: null },
            { tag: "Settings", row: "Settings", screen: "settings", place: "" }
        ]
    }
    function test_rows_lead_to_places(row) {
        for (const folded of [false, true]) {
            const shown = show({ foldedByUser: folded })
            for (const press of [item => mouseClick(placed(item)), item => keyClick(Qt.Key_Return)]) {
                way.openPage("none", "")
                const item = find(row.row)
                verify(!item.selected)
                item.forceActiveFocus()
                press(item)
                compare(way.screen, row.screen)
                compare(way.place, row.place ?? test.notebook)
                verify(item.selected)
            }
            shown.destroy()
            verifyGone("Navigation")
        }
    }
    function test_counts_follow_the_library() {
        show()
        find("Study, 1")
        rig.trash(rig.addPage(rig.addNotebook("Zoology"), "Bees", ""))
        find("All Notes, 2")
        find("Trash, 1")
        find("Zoology")
    }
    function test_the_theme_is_switched() {
        show()
        rig.desk.theme = "light"
        click("Dark theme")
        compare(rig.desk.theme, "dark")
    }
    function test_the_companion_greets_and_makes_room() {
        const shown = show()
        const companion = () => rig.find(test, "Plim")
        tryVerify(() => shown.width === 232)
        rig.desk.companion = false
        tryVerify(() => companion() === null || companion().still)
        rig.desk.companion = true
        tryVerify(() => companion() !== null && !companion().still)
        mouseClick(placed(companion()))
        compare(companion().reaction, "wave")
    }
}
