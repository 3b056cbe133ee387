import QtQuick
import QtTest
import Tessary.Search

ScreenTest {
    id: test
    name: "Palette"

    property var done: []

    Component {
        id: parts
        Item {
            id: root
            property alias sheet: sheet
            property alias keys: keys
            property bool mayWater: true

            CommandPalette {
                id: commandList
                desk: rig.desk
                onPageChosen: (place, page) => test.done.push(place + "/" + page)
                onNotebookChosen: notebook => test.done.push(notebook)
                Command {
                    title: "Water the plants"
                    keys: ["Ctrl+W", "F7"]
                    enabled: root.mayWater
                    onTriggered: test.done.push("watered")
                }
                Command {
                    title: "Open the window"
                    keywords: "air"
                    onTriggered: test.done.push("opened")
                }
            }
            CommandKeys {
                id: keys
                commands: commandList
            }
            PaletteSheet {
                id: sheet
                commands: commandList
            }
        }
    }

    function show() {
        const shown = createTemporaryObject(parts, this)
        done = []
        shown.sheet.show()
        tryVerify(() => shown.sheet.opened)
        return shown
    }

    function test_a_command_is_done_by_its_name() {
        const shown = show()
        find("Water the plants")
        type("air")
        tryVerify(() => !shows("Water the plants"))
        keyClick(Qt.Key_Return)
        compare(done, ["opened"])
        tryVerify(() => !shown.sheet.visible)
    }

    function test_a_command_is_done_by_each_of_its_keys_while_it_is_enabled() {
        const shown = show()
        keyClick(Qt.Key_F7)
        compare(done, [], "keys rest below a sheet")
        shown.sheet.close()
        tryVerify(() => !shown.sheet.visible)
        keyClick(Qt.Key_F7)
        keyClick(Qt.Key_W, Qt.ControlModifier)
        compare(done, ["watered", "watered"])
        shown.mayWater = false
        keyClick(Qt.Key_F7)
        compare(done.length, 2)
        shown.sheet.show()
        tryVerify(() => shown.sheet.opened)
        verify(!shows("Water the plants"))
    }

    function test_pages_and_notebooks_are_gone_to() {
        const botany = rig.addNotebook("Botany")
        const page = rig.addPage(botany, "Moss", "")
        const shown = show()
        click("Moss, Botany")
        tryVerify(() => !shown.sheet.visible)
        shown.sheet.show()
        tryVerify(() => shown.sheet.opened)
        type("bot")
        find("Botany, Notebook")
        keyClick(Qt.Key_Return)
        compare(done, [botany + "/" + page, botany])
    }
}
