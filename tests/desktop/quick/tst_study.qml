import QtQuick
import QtTest
import Tessary.Study

ScreenTest {
    name: "Study"

    Component {
        id: screen
        StudyScreen {
            anchors.fill: parent
            focus: true
        }
    }
    SignalSpy {
        id: asked
    }

    function show(signalName) {
        const shown = createTemporaryObject(screen, this, { desk: rig.desk })
        asked.target = shown
        asked.signalName = signalName
        asked.clear()
        shown.forceActiveFocus()
        return shown
    }
    function reviewed() {
        const notebook = rig.addNotebook("Botany")
        const page = rig.addPage(notebook, "Leaves", "")
        rig.rate(rig.addCard(page, "Stoma", "Pore"), 4, 1)
        rig.rate(rig.addCard(page, "Petiole", "Stalk"), 4, 3)
        rig.addCard(page, "Lamina", "Blade")
        return notebook
    }

    function test_an_empty_library_says_what_to_do() {
        show("openPages")
        click("Open your pages")
        compare(asked.count, 1)
    }
    function test_charts_are_read_by_keys() {
        reviewed()
        mouseMove(this, 1, 1)
        show("review")
        const year = find("Reviews of a year")
        tryVerify(() => rig.describe(year).startsWith("2 reviews on 2 days"))
        year.forceActiveFocus()
        compare(rig.describe(year), "Sat 21 Nov 2026: no reviews")
        keyClick(Qt.Key_Up)
        compare(rig.describe(year), "Fri 20 Nov 2026: 1 review")
        keyClick(Qt.Key_Left)
        compare(rig.describe(year), "Fri 13 Nov 2026: no reviews")

        const forecast = find("Cards due in the next 30 days")
        forecast.forceActiveFocus()
        compare(rig.describe(forecast), "Today: 0 cards")
        keyClick(Qt.Key_Right)
        compare(rig.describe(forecast), "Tomorrow: 0 cards")
        forecast.parent.forceActiveFocus()
        verify(rig.describe(forecast).indexOf(" 1") > 0)

        const recall = find("Cards by chance of recall now")
        recall.forceActiveFocus()
        compare(rig.describe(recall), "90 to 100 %: 2 cards")
    }
    function test_a_day_is_read_under_the_pointer() {
        reviewed()
        show("review")
        const year = find("Reviews of a year")
        mouseMove(year, 34 + 4, 20 + 4)
        tryVerify(() => rig.describe(year).startsWith("Mon 17 Nov 2025"))
    }
    function test_reviews_begin_here() {
        const notebook = reviewed()
        show("review")
        click("Review 1")
        compare(asked.signalArguments[0][0], "")
        click("Study Botany")
        compare(asked.signalArguments[1][0], notebook)
        keyClick(Qt.Key_R)
        compare(asked.count, 3)
    }
    function test_a_deck_opens() {
        const notebook = reviewed()
        show("openDeck")
        click("Botany")
        compare(asked.signalArguments[0][0], notebook)
        click("All cards")
        compare(asked.signalArguments[1][0], "all")
    }
}
