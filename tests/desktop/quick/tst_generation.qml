import QtQuick
import QtTest
import Tessary.Desk
import Tessary.Generation
import Tessary.Pages

ScreenTest {
    id: test
    name: "Generation"

    Component {
        id: screen
        Item {
            id: place
            property alias sheet: sheet
            property alias run: run
            property Desk desk
            anchors.fill: parent

            GenerationModel {
                id: run
                desk: place.desk
            }
            GenerationStatus {
                width: 200
                generation: run
                onClicked: sheet.open()
            }
            GenerationSheet {
                id: sheet
                desk: place.desk
                generation: run
            }
        }
    }
    Component {
        id: pages
        PagesScreen {
            anchors.fill: parent
            place: "all"
        }
    }
    SignalSpy {
        id: asked
        signalName: "generate"
    }
    SignalSpy {
        id: settingsAsked
        signalName: "openSettings"
    }

    /// The sheet for a page with this text, with a provider that is ready.
    function show(body) {
        const shown = createTemporaryObject(screen, this, { desk: rig.desk })
        const page = rig.addPage("", "Light reactions", body)
        shown.sheet.openFor(page, "")
        tryCompare(shown.sheet, "opened", true)
        return shown
    }

    /// By keyboard: what is on the sheet moves while it finds its size.
    function press(name) {
        find(name).forceActiveFocus()
        keyClick(Qt.Key_Space)
    }

    function test_cards_are_written_changed_and_taken_back() {
        rig.serveCards(["What is ATP?", "What is NADPH?"])
        const shown = show("Light makes ATP and NADPH.")
        find("Provider: Ollama, Ready")
        press("Generate cards")
        find("2 cards added")
        compare(rig.cards(), 2)

        press("Keep “What is ATP?”")
        compare(rig.cards(), 1)
        find("1 card in the deck")
        press("Keep “What is ATP?”")
        compare(rig.cards(), 2)

        press("Edit “What is NADPH?”")
        write("What is asked", "")
        keyClick(Qt.Key_Delete)
        compare(find("Save").enabled, false)
        type("Who carries electrons?")
        press("Save")
        find("Edit “Who carries electrons?”")

        press("Undo all")
        compare(rig.cards(), 0)
        tryCompare(shown.sheet, "visible", false)
    }

    function test_a_run_goes_on_without_its_sheet() {
        rig.serveCards(["What is ATP?"])
        const shown = show("Light makes ATP.")
        find("Provider: Ollama, Ready")
        shown.sheet.acceptIfEnabled()
        shown.sheet.close()  // before an answer can have come
        tryCompare(shown.sheet, "visible", false)
        tryCompare(shown.run, "running", false)
        compare(rig.cards(), 1)
        press("1 card added")
        find("Keep “What is ATP?”")
        press("Done")
        tryCompare(shown.sheet, "visible", false)
        compare(rig.cards(), 1)
        verifyGone("1 card added")
    }

    function test_a_failure_says_what_may_help() {
        rig.serveFailures()
        show("Light makes ATP.")
        find("Provider: Ollama, Ready")
        press("Generate cards")
        find("The AI answered something unexpected: HTTP 500: out of memory")
        verify(shows("Check the engine in Settings → Flashcards."))
        rig.serveCards(["What is ATP?"])
        press("Try again")
        find("1 card added")
    }

    function test_nothing_begins_without_a_kind_or_a_source() {
        rig.serveCards(["What is ATP?"])
        show("Light makes ATP.")
        find("Provider: Ollama, Ready")
        for (const kind of ["Flashcards", "Cloze", "Multiple choice"])
            press(kind)
        verify(shows("Choose at least one kind of card."))
        compare(find("Generate cards").enabled, false)
        press("Cloze")
        verifyGone("Choose at least one kind of card.")
        press("This page's text")
        verify(shows("Choose something to read."))
    }

    function test_another_provider_and_the_way_to_its_settings() {
        rig.serveCards(["What is ATP?"])
        const shown = show("Light makes ATP.")
        settingsAsked.target = shown.sheet
        settingsAsked.clear()
        press("Provider: Ollama, Ready")
        tryVerify(() => find("Apple Intelligence").menu.opened)
        click("Apple Intelligence")
        find("Provider: Apple Intelligence, Not ready")
        verify(shows("Apple Intelligence isn't available on this Mac"))
        press("Open settings")
        compare(settingsAsked.count, 1)
        tryCompare(shown.sheet, "visible", false)
    }

    function test_a_page_asks_with_what_is_selected_on_it() {
        const page = rig.addPage("", "Light reactions", "Light makes ATP.")
        asked.target = createTemporaryObject(pages, this, { desk: rig.desk, page: page })
        asked.clear()
        press("Generate cards…")
        find("Text of the page").select(0, 5)
        press("Generate cards…")
        compare(asked.signalArguments.map(each => [each[0], each[1]]), [[page, ""], [page, "Light"]])
    }
}
