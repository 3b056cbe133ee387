import QtQuick
import QtTest
import Tessary.Tests

/// A screen on a library of its own, used as a user would: by what can be read on it. Any complaint of QML is a
/// failure.
TestCase {
    id: test

    property alias rig: rig

    width: 1280
    height: 800
    visible: true
    when: windowShown

    LibraryRig { id: rig }

    function init() {
        failOnWarning(/.?/)
        rig.open()
        prepare()
    }
    /// What each test of a screen begins with.
    function prepare() {}
    /// The item of this accessible name, waited for.
    function find(name) {
        let item = null
        tryVerify(() => (item = rig.find(test, name)) !== null, 2000, "shown: " + name)
        return item
    }
    function shows(name) {
        return rig.find(test, name) !== null
    }
    function verifyGone(name) {
        tryVerify(() => rig.find(test, name) === null, 2000, "gone: " + name)
    }
    function click(name) {
        placed(find(name))
        mouseClick(find(name))  // laying out may have put another in its place
    }
    /// The item, when it has been laid out with all around it.
    function placed(item) {
        for (let around = item; around; around = around.parent)
            if (isPolishScheduled(around))
                waitForItemPolished(around, 2000)
        return item
    }
    /// Types into the field of this name, in place of what stands there.
    function write(name, text) {
        const field = find(name)
        field.forceActiveFocus()
        keyClick(Qt.Key_A, Qt.ControlModifier)
        type(text)
    }
    function type(text) {
        for (const letter of text)
            keyClick(letter)
    }
}
