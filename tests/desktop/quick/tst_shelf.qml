import QtQuick
import QtTest
import Tessary.Shelf

ScreenTest {
    name: "Shelf"

    Component {
        id: screen
        ShelfScreen {
            anchors.fill: parent
        }
    }
    SignalSpy {
        id: opened
        signalName: "openNotebook"
    }

    function show() {
        const shown = createTemporaryObject(screen, this, { desk: rig.desk })
        opened.target = shown
        opened.clear()
        return shown
    }

    function test_a_notebook_is_made_and_opened() {
        show()
        click("New notebook")
        write("Name", "Botany")
        click("Create notebook")
        tryVerify(() => rig.notebooks() === 1)
    }
}
