import QtQuick
import QtTest
import Tessary.Today

ScreenTest {
    id: test
    name: "Today"

    property string notebook
    property string page

    Component {
        id: screen
        TodayScreen {
            anchors.fill: parent
            focus: true
        }
    }
    SignalSpy { id: asked }

    function show(signalName) {
        const shown = createTemporaryObject(screen, this, { desk: rig.desk })
        asked.target = shown
        asked.signalName = signalName ?? "review"
        asked.clear()
        find("Due now")
        tryVerify(() => find("Sunday: 0 reviews") !== null)
        return shown
    }
    /// A card that is known, and one that waits.
    function study() {
        test.notebook = rig.addNotebook("Botany")
        test.page = rig.addPage(notebook, "Leaves", "")
        rig.rate(rig.addCard(page, "Stoma", "Pore"), 4, 1)
        return rig.addCard(page, "Lamina", "Blade")
    }

    function test_the_day_is_told() {
        study()
        rig.addExam(notebook, "Midterm", 9)
        show()
        find("Good morning")
        find("Saturday, 21 November · “Midterm” is in 9 days. 1 card waits for you.")
        find("1 card is due")
        find("Midterm")
        find("in 9 days")
        find("Leaves, Botany, 99 %")
        find("1 day")
        find("Friday: 1 review")
        find("Saturday: 0 reviews")
        compare(find("Plim").reaction, "wave")
    }
    function test_a_rating_changes_it() {
        const card = study()
        show()
        find("1 card is due")
        rig.rate(card, 4, 0)
        find("Nothing is due. Cards come back just before you would forget them.")
        find("2 days in a row")
        find("Saturday: 1 review")
        compare(find("Plim").reaction, "win")
    }
    function test_its_buttons_lead_on_data() {
        return [
            { tag: "review", button: "Start review", signalName: "review", to: () => [""] },
            { tag: "deck", button: "Review Botany, 1 due", signalName: "review", to: () => [test.notebook] },
            { tag: "page", button: "Leaves, Botany, 99 %", signalName: "openPage", to: () => [test.notebook, test.page] }
        ]
    }
    function test_its_buttons_lead_on(row) {
        study()
        show(row.signalName)
        click(row.button)
        find(row.button).forceActiveFocus()
        keyClick(Qt.Key_Return)
        compare(asked.count, 2)
        for (const call of asked.signalArguments)
            row.to().forEach((wanted, at) => compare(call[at], wanted))
    }
    function test_an_empty_library_leads_to_the_first_steps_data() {
        return [
            { tag: "shelf", button: "Open the shelf", signalName: "openShelf" },
            { tag: "welcome", button: "Show me around", signalName: "makeWelcome" }
        ]
    }
    function test_an_empty_library_leads_to_the_first_steps(row) {
        show(row.signalName)
        find("You have no cards yet. They are made on a page, from what you wrote.")
        find("Your streak starts with one card")
        for (const heading of ["Exams", "Weakest pages", "Go on writing", "Start review"])
            verify(!shows(heading), heading)
        click(row.button)
        compare(asked.count, 1)
    }
    function test_what_was_written_leaves_no_room_for_the_tour() {
        rig.addPage("", "Leaves", "")
        show()
        find("Go on writing")
        verify(!shows("Show me around"))
        find("Open the shelf")
    }
}
