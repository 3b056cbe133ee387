import QtQuick
import QtTest
import Tessary.Kit
import Tessary.Settings

ScreenTest {
    id: test
    name: "Settings"
    width: 900
    height: 600

    Component {
        id: screen
        SettingsScreen {
            anchors.fill: parent
            exchange: LibraryExchangeModel { desk: test.rig.desk }
            care: LibraryCareModel { desk: test.rig.desk }
        }
    }

    function show(pane) {
        return createTemporaryObject(screen, test, { desk: rig.desk, pane: pane })
    }
    function key(name, value) {
        tryVerify(() => rig.setting(name) === value, 2000, name + " = " + value + ", is " + rig.setting(name))
    }

    function test_a_pane_is_chosen_by_keyboard_and_by_click() {
        show("")
        find("AI engine")
        find("Settings")
        click("General")
        find("Reduce motion")
        const list = find("General").parent.parent
        list.forceActiveFocus()
        keyClick(Qt.Key_Down)
        find("Auto-backup on quit")
        keyClick(Qt.Key_Up)
        find("Reduce motion")
    }

    function test_the_companion_is_switched_off() {
        show("general")
        click("Plim, the companion")
        key("tessary.companion", "false")
    }

    function test_the_keys_are_those_of_the_commands() {
        createTemporaryObject(screen, test, { desk: rig.desk, pane: "about", commands: [
            { title: "Water the plants", keyText: "Ctrl W" }, { title: "Without a key", keyText: "" }] })
        find("Ctrl W")
        verify(!shows("Without a key"))
    }

    function test_a_number_is_stored_or_refused() {
        show("flashcards")
        write("New cards", "35")
        keyClick(Qt.Key_Return)
        key("flashcards.newPerDay", "35")
        write("New cards", "lots")
        keyClick(Qt.Key_Return)
        find("“lots” doesn't fit here: it takes a whole number, 0 or more.")
        key("flashcards.newPerDay", "35")
        compare(find("New cards").text, "35")
        click("More: New cards")
        key("flashcards.newPerDay", "36")
        verifyGone("“lots” doesn't fit here: it takes a whole number, 0 or more.")
    }

    function test_the_retention_says_what_it_costs() {
        show("flashcards")
        const slider = find("Desired retention")
        slider.forceActiveFocus()
        keyClick(Qt.Key_Right)
        key("flashcards.retention", "0.91")
        compare(slider.value, 91)
    }

    function test_kinds_keep_one() {
        show("flashcards")
        for (const name of ["Question", "Cloze"]) {
            const chip = find(name)
            chip.forceActiveFocus()
            keyClick(Qt.Key_Space)
        }
        key("flashcards.kinds", "multipleChoice")
        const last = find("Choice")
        last.forceActiveFocus()
        keyClick(Qt.Key_Space)
        find("At least one has to stay.")
        verify(last.checked)
    }

    function test_switches_and_choices_are_stored_at_once() {
        show("general")
        click("Reduce motion")
        tryVerify(() => rig.desk.reduceMotion)
        click("Dark")
        key("tessary.theme", "dark")
        const language = find("Language of what the AI writes")
        language.forceActiveFocus()
        keyClick(Qt.Key_Down)
        key("tessary.appLanguage", "en")
    }

    function test_a_key_goes_in_and_out() {
        show("ai")
        click("Google Gemini")
        key("flashcards.provider", "gemini")
        find("3. Paste it here.")
        write("Google Gemini API key", "two words")
        click("Save key")
        find("This is no API key: it has spaces or special characters in it.")
        write("Google Gemini API key", "abc-123")
        keyClick(Qt.Key_Return)
        find("Stored in your keychain, never shown again")
        find("Saved in your keychain")
        click("Replace…")
        compare(find("Google Gemini API key").text, "")
        click("Keep the old one")
        click("Remove key")
        find("Google Gemini API key")
        find("Removed from your keychain")
    }

    function test_an_address_is_checked() {
        show("ai")
        click("Ollama")
        write("Address", "my box")
        keyClick(Qt.Key_Return)
        find("“my box” doesn't fit here: it takes an address that begins with http:// or https://.")
        key("flashcards.ollamaURL", "")
        write("Address", "http://127.0.0.1:1")
        keyClick(Qt.Key_Return)
        find("Ollama isn't running at http://127.0.0.1:1")
        write("Address", "")
        keyClick(Qt.Key_Backspace)
        keyClick(Qt.Key_Return)
        key("flashcards.ollamaURL", "")
    }

    function test_the_library_is_backed_up_and_checked() {
        rig.addPage("", "Leaves", "Green.")
        show("backup")
        find("No backup was made yet")
        click("Back up now")
        tryVerify(() => !shows("No backup was made yet"))
        click("Library")
        click("Check now")
        find("The library is in order.")
        find("In all")
    }

    function test_what_has_the_focus_is_in_view() {
        show("flashcards")
        const last = find("Also write a summary page")
        const top = () => last.mapToItem(test, 0, 0).y
        verify(top() > test.height)
        last.forceActiveFocus(Qt.TabFocusReason)
        tryVerify(() => top() + last.height < test.height)
    }
}
