import QtQuick
import QtTest
import Tessary.Kit

/// What stands on what must be readable: 4.5 for text, 3 for the outlines and marks that tell a control's state
/// (WCAG 2.1, AA), whatever colour a notebook lends the window.
TestCase {
    name: "Theme"

    readonly property var accents: ["#FFDB00", "#FFFFFF", "#000000", "#1E3A8A", "#FF5A5F", "#8BC34A", "#7F7F7F", "#F2D6A2"]

    // By the standard's formula, not by the theme's own.
    function part(channel) {
        return channel <= 0.04045 ? channel / 12.92 : Math.pow((channel + 0.055) / 1.055, 2.4)
    }
    function light(c) {
        return 0.2126 * part(c.r) + 0.7152 * part(c.g) + 0.0722 * part(c.b)
    }
    function ratio(a, b) {
        const one = light(a), other = light(b)
        return (Math.max(one, other) + 0.05) / (Math.min(one, other) + 0.05)
    }
    function atLeast(wanted, front, on) {
        const found = ratio(Theme[front], Theme[on])
        verify(found >= wanted, (Theme.dark ? "dark " : "light ") + Theme.accent + ": " + front + " on " + on + " has "
               + found.toFixed(2))
    }
    /// Calls `check` in light and dark, with each accent.
    function everyLook(check) {
        for (const dark of [false, true]) {
            Theme.dark = dark
            for (const accent of accents) {
                Theme.accent = accent
                check()
            }
        }
        Theme.dark = false
        Theme.accent = accents[0]
    }

    function test_text_is_readable() {
        everyLook(() => {
            for (const ground of ["desk", "paper", "raised", "sunken"]) {
                for (const text of ["ink", "ink2", "ink3", "good", "warn", "bad", "info", "accentText"])
                    atLeast(4.5, text, ground)
            }
            for (const ground of ["accentSoft", "highlight"])
                atLeast(4.5, "ink", ground)
            atLeast(4.5, "accentInk", "accentFill")
            for (const state of ["good", "warn", "bad", "info"]) {
                verify(ratio(Theme[state], Theme.soft(Theme[state])) >= 4.5, state + " on its soft fill")
                verify(ratio(Theme.ink, Theme.soft(Theme[state])) >= 4.5, "ink on soft " + state)
            }
        })
    }

    function test_controls_are_seen() {
        everyLook(() => {
            for (const ground of ["desk", "paper", "raised", "sunken"]) {
                for (const mark of ["edge", "focus", "accentMark"])
                    atLeast(3, mark, ground)
            }
        })
    }
}
