import QtQuick
import QtTest
import Tessary.Pages

ScreenTest {
    id: test
    name: "Pages"

    Component {
        id: screen
        PagesScreen {
            anchors.fill: parent
            place: "all"
            onOpenPage: id => page = id
        }
    }
    property PagesScreen shown

    function show(page) {
        shown = createTemporaryObject(screen, test, { desk: rig.desk, page: page ?? "" });
        return shown;
    }
    /// Presses something that has just come up, once all is in its place.
    function choose(name) {
        for (let item = find(name); item; item = item.parent) {
            if (isPolishScheduled(item))
                verify(waitForItemPolished(item));
        }
        mouseClick(find(name));
    }
    function undo() { rig.desk.undo(); }
    /// Drags one page of the tree onto another, or `shift` pixels beside its middle.
    function drag(name, onto, shift) {
        const from = find(name), to = find(onto);
        const end = to.mapToItem(from, to.width / 2, to.height / 2 + (shift ?? 0));
        mousePress(from, 60, from.height / 2);
        mouseMove(from, 70, from.height / 2 + 4);
        mouseMove(from, 80, from.height / 2 + 12);
        mouseMove(from, end.x, end.y);
        mouseRelease(from, end.x, end.y);
    }

    function test_a_page_is_written_by_keyboard() {
        show();
        click("Write a page");
        tryVerify(() => rig.pages() === 1);
        write("Title", "Cells");
        keyClick(Qt.Key_Return);
        type("alive");
        keyClick(Qt.Key_Return);
        type("and kicking");
        tryVerify(() => rig.bodyOf(shown.page) === "alive\nand kicking");
        compare(rig.titleOf(shown.page), "Cells");
        find("Cells");
        find("Edited just now · 3 words");
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        tryVerify(() => rig.bodyOf(shown.page) !== "alive\nand kicking");
        keyClick(Qt.Key_Z, Qt.ControlModifier | Qt.ShiftModifier);
        tryVerify(() => rig.bodyOf(shown.page) === "alive\nand kicking");
    }

    function test_opening_a_page_changes_nothing_and_leaves_nothing_to_undo() {
        const first = rig.addPage("", "First", "# One\ntext");
        const second = rig.addPage("", "Second", "other");
        show(first);
        find("Text of the page").forceActiveFocus();
        click("Second");
        tryCompare(find("Text of the page"), "text", "other");
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        compare(rig.bodyOf(second), "other");
        compare(rig.bodyOf(first), "# One\ntext");
        compare(find("Text of the page").canUndo, false);
    }

    function test_pages_are_dragged_under_each_other_and_out_again() {
        const a = rig.addPage("", "A", ""), b = rig.addPage("", "B", ""), c = rig.addPage("", "C", "");
        show(a);
        drag("C", "A");
        tryVerify(() => rig.parentOf(c) === a);
        tryVerify(() => rig.find(test, "Fold “A”") !== null);
        drag("A", "C");
        compare(rig.parentOf(a), "");
        wait(0);
        drag("C", "A", -13);
        tryVerify(() => rig.parentOf(c) === "");
        undo();
        tryVerify(() => rig.parentOf(c) === a);
        compare(rig.parentOf(b), "");
    }

    function test_a_drag_is_given_up_by_escape() {
        const a = rig.addPage("", "A", ""), b = rig.addPage("", "B", "");
        show(a);
        const from = find("B"), to = find("A");
        const end = to.mapToItem(from, 60, 16);
        mousePress(from, 60, 16);
        mouseMove(from, 70, 26);
        mouseMove(from, end.x, end.y);
        keyClick(Qt.Key_Escape);
        mouseRelease(from, end.x, end.y);
        wait(0);
        compare(rig.parentOf(b), "");
    }

    function test_the_tree_is_rearranged_by_keyboard() {
        const a = rig.addPage("", "A", ""), b = rig.addPage("", "B", "");
        show(b);
        find("Pages").forceActiveFocus();
        keyClick(Qt.Key_Right, Qt.ControlModifier | Qt.ShiftModifier);
        tryVerify(() => rig.parentOf(b) === a);
        find("Fold “A”");
        keyClick(Qt.Key_Left, Qt.ControlModifier | Qt.ShiftModifier);
        tryVerify(() => rig.parentOf(b) === "");
        keyClick(Qt.Key_Delete);
        tryVerify(() => rig.pages() === 1);
        tryCompare(shown, "shownPage", a);
        undo();
        tryVerify(() => rig.pages() === 2);
    }

    function test_a_page_is_moved_to_a_notebook_and_pinned_by_the_menu() {
        const notebook = rig.addNotebook("Botany");
        const under = rig.addPage(notebook, "Leaves", "");
        const page = rig.addPage("", "Stomata", "");
        show(page);
        mouseClick(find("Stomata"), 60, 16, Qt.RightButton);
        choose("Pin to the top");
        tryVerify(() => rig.isPinned(page));
        click("More");
        choose("Move to…");
        write("Notebook or page", "leaves");
        keyClick(Qt.Key_Return);
        tryVerify(() => rig.parentOf(page) === under);
        verifyGone("Notebook or page");
        click("More");
        choose("Unpin");
        tryVerify(() => !rig.isPinned(page));
    }

    function test_tags_are_completed_painted_and_filtered_by() {
        const first = rig.addPage("", "First", ""), second = rig.addPage("", "Second", "");
        show(first);
        write("New tag", "chapter");
        keyClick(Qt.Key_Return);
        tryVerify(() => rig.tagsOf(first).length === 1);
        click("Second");
        write("New tag", "cha");
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryVerify(() => rig.tagsOf(second)[0] === "chapter");
        choose("chapter");
        choose("Purple");
        tryVerify(() => rig.tagColor("chapter") === "7A5AA8");
        write("New tag", "alone");
        keyClick(Qt.Key_Return);
        click("Filter by tag");
        choose("alone, 1 page");
        verifyGone("First");
        find("Only pages with “alone”").forceActiveFocus();
        keyClick(Qt.Key_Delete);
        find("First");
    }

    function test_the_panel_shows_the_outline_and_can_be_hidden() {
        const page = rig.addPage("", "Page", "# One\ntext\n## Two\nmore");
        rig.addCard(page, "Front", "Back");
        show(page);
        click("Outline");
        compare(rig.setting("tessary.panel"), "outline");
        click("Two");
        tryCompare(find("Text of the page"), "cursorPosition", 11);
        keyClick(Qt.Key_Backslash, Qt.ControlModifier);
        verifyGone("Outline");
        compare(rig.setting("tessary.panel"), "hidden");
        click("Show cards and outline");
        click("Cards");
        find("Recall on this page");
    }

    function test_the_panel_opens_over_a_narrow_page() {
        const page = rig.addPage("", "Page", "# One");
        test.width = 900;
        show(page);
        compare(shows("Outline"), false);
        keyClick(Qt.Key_Backslash, Qt.ControlModifier);
        click("Outline");
        compare(rig.setting("tessary.panel"), "");
        keyClick(Qt.Key_Escape);
        verifyGone("Outline");
        test.width = 1280;
    }

    function test_words_are_found_on_the_page() {
        const page = rig.addPage("", "Page", "one two One\nTwo one");
        show(page);
        const body = find("Text of the page");
        body.forceActiveFocus();
        keyClick(Qt.Key_F, Qt.ControlModifier);
        write("Find on the page", "one");
        find("1 of 3");
        compare(body.selectedText, "one");
        keyClick(Qt.Key_Return);
        find("2 of 3");
        compare(body.selectionStart, 8);
        keyClick(Qt.Key_Return);
        keyClick(Qt.Key_Return);
        find("1 of 3");
        click("Previous match");
        find("3 of 3");
        keyClick(Qt.Key_A, Qt.ControlModifier);
        find("Find on the page").forceActiveFocus();
        type("x");
        keyClick(Qt.Key_Escape);
        verify(body.activeFocus);
        compare(rig.bodyOf(page), "one two One\nTwo one");
    }

    function test_text_is_copied_by_the_menu() {
        const page = rig.addPage("", "Page", "old ");
        show(page);
        const body = find("Text of the page");
        body.forceActiveFocus();
        mouseClick(body, 10, 10, Qt.RightButton);
        choose("Select all");
        mouseClick(body, 10, 10, Qt.RightButton);
        choose("Copy");
        body.deselect();
        body.cursorPosition = body.length;
        mouseClick(body, 10, 10, Qt.RightButton);
        choose("Paste");
        tryVerify(() => rig.bodyOf(page) === "old old ");
    }
}
