import QtQuick
import QtTest
import Tessary.Review

ScreenTest {
    id: test
    name: "Review"

    property string page

    Component {
        id: screen
        ReviewScreen {
            anchors.fill: parent
        }
    }
    SignalSpy { id: asked }

    function prepare() {
        rig.set("flashcards.shuffle", "false")
        test.page = rig.addPage(rig.addNotebook("Modern History"), "The Estates-General", "")
    }
    /// Begins a sitting over all cards that are there.
    function sit(signalName) {
        const shown = createTemporaryObject(screen, this, { desk: rig.desk })
        asked.target = shown
        asked.signalName = signalName ?? "closed"
        asked.clear()
        shown.forceActiveFocus()
        tryVerify(() => shown.focusTarget.activeFocus)
        return shown
    }
    function add(fronts) {
        return fronts.map(front => rig.addCard(page, front, "Answer to " + front))
    }
    /// How the companion was asked to react last.
    function reaction() {
        return find("Plim").reaction
    }

    /// What was typed was no command.
    function verifyUntouched(card) {
        const now = rig.card(card)
        verify(!now.suspended && !now.flagged)
        compare(now.reps, 0)
    }

    function test_cards_are_turned_and_rated_by_keys() {
        const cards = add(["One?", "Two?", "Three?", "Four?"])
        sit()
        const ratings = [
            { key: Qt.Key_1, front: "One?", reaction: "fail" },
            { key: Qt.Key_2, front: "Two?", reaction: "fail" },
            { key: Qt.Key_3, front: "Three?", reaction: "win" },
            { key: Qt.Key_4, front: "Four?", reaction: "win" }
        ]
        compare(reaction(), "study")
        let due = 0
        ratings.forEach((rating, at) => {
            find(rating.front)
            verify(!shows("Answer to " + rating.front))
            keyClick(Qt.Key_Space)
            find("Answer to " + rating.front)
            keyClick(rating.key)
            const card = rig.card(cards[at])
            compare(card.reps, 1)
            verify(card.dueIn > due, rating.front)
            due = card.dueIn
            compare(reaction(), rating.reaction)
        })
    }
    function test_space_gives_the_suggested_rating_and_u_takes_it_back() {
        const cards = add(["One?", "Two?"])
        sit()
        keyClick(Qt.Key_Space)
        find("Answer to One?")
        keyClick(Qt.Key_Space)
        find("Two?")
        compare(rig.card(cards[0]).reps, 1)
        find("1 of 3")  // it comes back in a while
        keyClick(Qt.Key_U)
        find("One?")
        find("0 of 2")
        compare(rig.card(cards[0]).reps, 0)
        keyClick(Qt.Key_U)
        find("There is nothing to take back.")
    }
    function test_the_end_sums_up() {
        add(["One?", "Two?"])
        sit()
        for (let i = 0; i < 2; ++i) {
            click("Show answer")
            find("Good, back in 10m")
            keyClick(Qt.Key_4)
        }
        find("That's all for now")
        compare(rig.describe(find("Remembered")), "100 %")
        verify(!shows("Study more"))
        keyClick(Qt.Key_Return)
        compare(asked.count, 1)
    }
    function test_an_answer_is_typed_data() {
        return [
            { tag: "right", typed: "sufufe", verdict: "Matches the expected answer.", rating: "Good" },
            { tag: "wrong", typed: "1234", verdict: "That doesn't match the expected answer.", rating: "Again" }
        ]
    }
    function test_an_answer_is_typed(row) {
        rig.set("flashcards.typeAnswers", "true")
        const card = rig.addCard(page, "One?", "sufufe")
        sit()
        tryVerify(() => find("Your answer").activeFocus)
        type(row.typed)
        compare(find("Your answer").text, row.typed)
        keyClick(Qt.Key_Return)
        find(row.verdict)
        find("You wrote: " + row.typed)
        tryVerify(() => test.Window.activeFocusItem.text === row.rating)
        verifyUntouched(card)
    }
    function test_blanks_are_filled_in_one_after_the_other() {
        rig.set("flashcards.typeAnswers", "true")
        rig.addCloze(page, "The {{ribosome}} makes {{proteins}}.")
        sit()
        find("The _____ makes _____.")
        tryVerify(() => find("Blank 1").activeFocus)
        type("ribosome")
        keyClick(Qt.Key_Return)
        verify(find("Blank 2").activeFocus)
        type("proteins")
        keyClick(Qt.Key_Return)
        find("The ribosome makes proteins.")
        find("You wrote: ribosome · proteins")
    }
    function test_a_cloze_is_turned() {
        rig.addCloze(page, "The {{ribosome}} makes proteins.")
        sit()
        find("The _____ makes proteins.")
        keyClick(Qt.Key_Space)
        find("The ribosome makes proteins.")
        verifyGone("The _____ makes proteins.")
    }
    function test_an_option_is_chosen_data() {
        return [
            { tag: "right", key: Qt.Key_2, wrong: "", reaction: "win" },
            { tag: "wrong", key: Qt.Key_3, wrong: "Mars", reaction: "fail" }
        ]
    }
    function test_an_option_is_chosen(row) {
        const card = rig.addChoice(page, "Which is home?", ["Venus", "Earth", "Mars"], 1)
        add(["Next?"])
        sit()
        keyClick(row.key)
        tryVerify(() => rig.describe(find("Earth")) === "The right answer")
        for (const option of ["Venus", "Mars"])
            compare(rig.describe(find(option)), option === row.wrong ? "Your answer, which is wrong" : "")
        keyClick(Qt.Key_Space)
        compare(reaction(), row.reaction)
        compare(rig.card(card).reps, 1)
        find("Next?")
    }
    function test_a_card_is_edited_and_the_companion_waits() {
        const cards = add(["One?"])
        sit()
        const companion = find("Plim")
        verify(rig.moves(companion))
        keyClick(Qt.Key_E)
        tryVerify(() => find("What is asked").activeFocus)
        verify(!rig.moves(companion))
        write("What is asked", "sufuse")
        click("Save")
        find("sufuse")
        verifyGone("What is asked")
        verify(rig.moves(companion))
        compare(rig.card(cards[0]).front, "sufuse")
        verifyUntouched(cards[0])
        keyClick(Qt.Key_Space)
        find("Answer to One?")
    }
    function test_a_card_is_suspended_and_comes_back() {
        const cards = add(["One?", "Two?"])
        sit()
        keyClick(Qt.Key_S)
        find("Two?")
        verify(rig.card(cards[0]).suspended)
        find("Suspended. It won't come up in reviews.")
        keyClick(Qt.Key_U)
        find("One?")
        verify(!rig.card(cards[0]).suspended)
    }
    function test_a_card_is_flagged() {
        const cards = add(["One?"])
        sit()
        keyClick(Qt.Key_F)
        find("Remove the flag")
        verify(rig.card(cards[0]).flagged)
        click("Remove the flag")
        find("Flag")
        verify(!rig.card(cards[0]).flagged)
    }
    function test_keys_lead_out_data() {
        return [
            { tag: "to the page", key: Qt.Key_O, signalName: "openPage" },
            { tag: "back", key: Qt.Key_Escape, signalName: "closed" }
        ]
    }
    function test_keys_lead_out(row) {
        add(["One?"])
        sit(row.signalName)
        keyClick(row.key)
        compare(asked.count, 1)
        if (row.signalName === "openPage")
            compare(asked.signalArguments[0][0], page)
    }
    function test_nothing_is_due() {
        sit()
        click("Back")
        compare(asked.count, 1)
    }
}
