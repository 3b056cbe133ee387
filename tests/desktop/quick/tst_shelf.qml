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

    function test_a_picture_for_the_cover_is_asked_for() {
        show()
        click("New notebook")
        write("Name", "Botany")
        verify(!shows("Remove picture"))
        click("Choose picture…")
        find("Choose a picture for the cover")
        keyClick(Qt.Key_Escape)
        verifyGone("Choose a picture for the cover")
        click("Create notebook")
        tryVerify(() => rig.notebooks() === 1)
    }
}
