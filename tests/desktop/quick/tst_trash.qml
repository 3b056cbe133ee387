import QtQuick
import QtTest
import Tessary.Shell

ScreenTest {
    id: test
    name: "Trash"

    property string page

    Component {
        id: screen
        TrashScreen {
            anchors.fill: parent
        }
    }

    /// Two deletions: a page with its subpage, and another page.
    function show() {
        test.page = rig.addPage(rig.addNotebook("Botany"), "Leaves", "")
        rig.addSubpage(page, "Stoma")
        rig.trash(page)
        rig.trash(rig.addPage("", "Roots", ""))
        createTemporaryObject(screen, this, { desk: rig.desk })
        find("Leaves and its subpage")
        find("Roots")
    }

    function test_pages_come_back_with_what_went_along() {
        show()
        compare(rig.trashed(), 3)
        click("Restore Leaves")
        verifyGone("Leaves and its subpage")
        compare(rig.trashed(), 1)
        compare(rig.titleOf(page), "Leaves")
        click("Restore Roots")
        find("The trash is empty.")
        compare(rig.pages(), 3)
    }
    function test_it_is_emptied_after_asking() {
        show()
        click("Empty the trash…")
        find("Empty the trash?")
        click("Keep")
        verifyGone("Empty the trash?")
        compare(rig.trashed(), 3)
        click("Empty the trash…")
        click("Delete for good")
        tryVerify(() => rig.trashed() === 0)
        find("The trash is empty.")
        verifyGone("Roots")
        verify(!shows("Empty the trash…"))
        compare(rig.titleOf(page), "")
    }
    function test_it_is_emptied_by_keys() {
        show()
        find("Empty the trash…").forceActiveFocus()
        keyClick(Qt.Key_Return)
        find("Empty the trash?")
        keyClick(Qt.Key_Escape)
        verifyGone("Empty the trash?")
        compare(rig.trashed(), 3)
    }
    function test_an_empty_one_says_so() {
        createTemporaryObject(screen, this, { desk: rig.desk })
        find("Nothing here. Deleted pages can be brought back from here for 30 days.")
        verify(!shows("Empty the trash…"))
    }
}
