import QtQuick
import QtTest
import Tessary.Study

ScreenTest {
    id: test
    name: "Deck"

    property string notebook
    property string page

    Component {
        id: screen
        DeckScreen {
            anchors.fill: parent
            focus: true
        }
    }
    SignalSpy {
        id: asked
    }

    function show() {
        test.notebook = rig.addNotebook("Botany")
        test.page = rig.addPage(notebook, "Leaves", "")
        for (const front of ["Stoma", "Petiole", "Lamina"])
            rig.addCard(page, front, "Answer")
        const shown = createTemporaryObject(screen, this, { desk: rig.desk, place: notebook })
        asked.target = shown
        find("Stoma")
        return shown
    }

    function test_cards_are_searched() {
        show()
        write("Search cards and pages", "peti")
        verifyGone("Stoma")
        verify(shows("Petiole"))
        write("Search cards and pages", "nothing")
        click("Show all cards")
        find("Stoma")
    }
    function test_a_card_is_added_to_a_page() {
        show()
        click("Add card")
        write("Front", "Xylem")
        write("Back", "Wood")
        click("Add card")
        tryVerify(() => rig.cards() === 4)
        find("Xylem")
    }
    function test_a_card_is_edited_in_its_sheet() {
        show()
        click("Petiole")
        write("Front", "Stalk")
        click("Save")
        find("Stalk")
        verifyGone("Petiole")
        compare(rig.cards(), 3)
    }
    function test_picked_cards_are_deleted_and_come_back() {
        show()
        click("Pick Stoma")
        click("Pick Lamina")
        find("2 cards picked")
        click("Delete")
        tryVerify(() => rig.cards() === 1)
        verifyGone("Stoma")
        click("Undo")
        tryVerify(() => rig.cards() === 3)
        find("Stoma")
        find("Lamina")
    }
    function test_the_list_is_led_by_keys() {
        show()
        find("Cards").forceActiveFocus()
        keyClick(Qt.Key_Home)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_F)
        find("Card flagged.")
        keyClick(Qt.Key_Space)
        find("1 card picked")
        keyClick(Qt.Key_Down, Qt.ShiftModifier)
        find("2 cards picked")
        keyClick(Qt.Key_Escape)
        verifyGone("2 cards picked")
        keyClick(Qt.Key_Delete)
        tryVerify(() => rig.cards() === 2)
        verifyGone("Lamina")
    }
    function test_a_review_of_the_deck_begins() {
        show()
        asked.signalName = "review"
        asked.clear()
        click("Review 3")
        compare(asked.signalArguments[0][0], notebook)
    }
}
