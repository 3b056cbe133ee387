import QtQuick
import QtTest
import Tessary.Kit

/// The companion as the window shows it: a badge that follows the user's wishes and wastes nothing.
ScreenTest {
    id: test
    name: "Companion"

    property bool picture: false

    Component {
        id: badge
        PlimBadge {
            desk: rig.desk
            picture: test.picture
            size: 96
        }
    }

    function show(properties) {
        createTemporaryObject(badge, this, properties ?? {})
        const shown = find("Plim")
        verify(rig.moves(shown))
        return shown
    }
    function cleanup() {
        Theme.reduceMotion = false
        test.picture = false
    }
    /// Times that it is painted while the window is drawn again and again.
    function paintsOf(companion) {
        const before = rig.paints(companion)
        for (let i = 0; i < 3; ++i)
            grabImage(test)
        return rig.paints(companion) - before
    }

    function test_it_is_gone_when_the_user_wants_none() {
        const shown = show()
        rig.desk.companion = false
        verifyGone("Plim")
        verify(!rig.moves(shown))
        rig.desk.companion = true
        compare(find("Plim"), shown)
        verify(rig.moves(shown))
    }
    function test_a_picture_of_it_stays() {
        test.picture = true
        const shown = show()
        rig.desk.companion = false
        compare(find("Plim"), shown)
        verify(!rig.moves(shown))
    }
    function test_it_stands_still_data() {
        return [
            { tag: "reduced motion", stop: () => Theme.reduceMotion = true, go: () => Theme.reduceMotion = false },
            { tag: "covered", stop: shown => shown.covered = true, go: shown => shown.covered = false },
            { tag: "paused", stop: shown => shown.paused = true, go: shown => shown.paused = false },
            { tag: "hidden", stop: shown => shown.visible = false, go: shown => shown.visible = true }
        ]
    }
    function test_it_stands_still(row) {
        const shown = show()
        row.stop(shown)
        verify(!rig.moves(shown))
        grabImage(test)
        compare(paintsOf(shown), 0)
        row.go(shown)
        verify(rig.moves(shown))
        const before = rig.paints(shown)
        tryVerify(() => rig.paints(shown) > before)
    }
    function test_it_falls_asleep_and_takes_no_paints() {
        const shown = show()
        rig.pass(shown, 20)
        verify(!rig.moves(shown))
        grabImage(test)
        compare(paintsOf(shown), 0)
        shown.play("wave")
        verify(rig.moves(shown))
        const before = rig.paints(shown)
        tryVerify(() => rig.paints(shown) > before)
    }
}
