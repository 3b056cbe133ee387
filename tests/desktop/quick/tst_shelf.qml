import QtQuick
import QtTest
import Tessary.Shelf

ScreenTest {
    id: test
    name: "Shelf"

    Component {
        id: screen
        ShelfScreen {
            anchors.fill: parent
            focus: true
        }
    }
    SignalSpy { id: asked }

    /// Zoology stands before Botany, with a page in each.
    function fill() {
        rig.addPage(rig.addNotebook("Botany"), "Leaves", "")
        return rig.addPage(rig.addNotebook("Zoology"), "Bees", "")
    }
    function show(signalName, properties) {
        const shown = createTemporaryObject(screen, this, Object.assign({ desk: rig.desk }, properties))
        asked.target = shown
        asked.signalName = signalName ?? "openNotebook"
        asked.clear()
        return shown
    }
    /// Chooses from the menu of a notebook.
    function choose(cell, entry) {
        mouseClick(placed(find(cell)), 80, 100, Qt.RightButton)
        click(entry)
    }

    function test_a_notebook_is_made_and_opened() {
        show()
        click("New notebook")
        find("Name")
        verify(!find("Create notebook").enabled)
        write("Name", "Botany")
        click("Leather")
        click("Create notebook")
        const cell = find("Botany, 0 pages")
        compare(rig.notebooks(), 1)
        compare(rig.notebook("Botany").material, "leather")
        tryVerify(() => cell.activeFocus)
        keyClick(Qt.Key_Return)
        compare(asked.count, 1)
    }
    function test_it_is_given_another_look() {
        fill()
        show()
        choose("Botany, 1 page", "Rename and restyle…")
        write("Name", "Plants")
        click("Green")
        click("Save")
        find("Plants, 1 page")
        verifyGone("Botany, 1 page")
        compare(rig.notebook("Plants").color, "4F7F57")
        compare(rig.notebook("Botany"), {})
        verifyGone("Save")
        tryVerify(() => find("Plants, 1 page").activeFocus)
        keyClick(Qt.Key_F2)
        write("Colour as hex digits", "#12345")
        find("A colour is six hex digits, as in #4F7F57.")
        verify(!find("Save").enabled)
        click("Cancel")
        verifyGone("Save")
        compare(rig.notebook("Plants").color, "4F7F57")
    }
    function test_it_is_pinned_to_the_front() {
        fill()
        show()
        const front = () => find("Notebooks").itemAtIndex(0).name
        choose("Botany, 1 page", "Pin to the front")
        find("Botany, 1 page, pinned")
        verify(rig.notebook("Botany").pinned)
        tryVerify(() => front() === "Botany")
        choose("Botany, 1 page, pinned", "Unpin")
        find("Botany, 1 page")
        verify(!rig.notebook("Botany").pinned)
        tryVerify(() => front() === "Zoology")
    }
    function test_it_is_deleted_data() {
        return [
            { tag: "pages stay", choice: "Keep them as loose pages", pages: 2, trashed: 0 },
            { tag: "pages go", choice: "Move them to the Trash", pages: 1, trashed: 1 }
        ]
    }
    function test_it_is_deleted(row) {
        fill()
        show()
        find("Zoology, 1 page").forceActiveFocus()
        keyClick(Qt.Key_Right)
        keyClick(Qt.Key_Delete)
        find("Delete “Botany”?")
        click("Cancel")
        verifyGone("Delete “Botany”?")
        compare(rig.notebooks(), 2)
        choose("Botany, 1 page", "Delete…")
        find("It has 1 page.")
        click(row.choice)
        click("Delete notebook")
        verifyGone("Botany, 1 page")
        compare(rig.notebooks(), 1)
        compare(rig.pages(), row.pages)
        compare(rig.trashed(), row.trashed)
        compare(shows("Loose pages, 1 page"), row.trashed === 0)
    }
    function test_what_is_due_is_a_click_away() {
        rig.addCard(fill(), "Legs?", "Six")
        show("startReview")
        find("1 card is due")
        click("Start review")
        compare(asked.count, 1)
    }
    function test_a_new_shelf_offers_a_look_around() {
        show("welcomeAsked", { untouched: true })
        click("Look around in a welcome notebook")
        compare(asked.count, 1)
    }

    function test_a_picture_for_the_cover_is_asked_for() {
        show()
        click("New notebook")
        write("Name", "Botany")
        verify(!shows("Remove picture"))
        click("Choose picture…")
        find("Choose a picture for the cover")
        keyClick(Qt.Key_Escape)
        verifyGone("Choose a picture for the cover")
        click("Create notebook")
        tryVerify(() => rig.notebooks() === 1)
    }
}
