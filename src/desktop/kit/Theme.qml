pragma Singleton
import QtQuick

/// Every colour, typeface and duration of the window. `dark`, `reduceMotion` and `accent` are set from outside; all
/// else follows from them. Durations in milliseconds.
QtObject {
    id: theme

    property bool dark: false
    property bool reduceMotion: false
    /// The colour of the notebook at hand.
    property color accent: defaultAccent
    /// Where no notebook is shown.
    readonly property color defaultAccent: "#FFDB00"

    readonly property color desk: dark ? "#181512" : "#F0EADF"
    readonly property color paper: dark ? "#211D19" : "#FCFAF5"
    readonly property color raised: dark ? "#2A2520" : "#FFFFFF"
    readonly property color sunken: dark ? "#1B1815" : "#F5F0E6"
    /// Decorative hairlines only; the outline of a control is `edge`.
    readonly property color line: dark ? "#39322B" : "#E3DACA"
    readonly property color edge: dark ? "#837868" : "#8B8170"

    readonly property color ink: dark ? "#F4EEE3" : "#201C17"
    readonly property color ink2: dark ? "#C8BEAF" : "#544C41"
    readonly property color ink3: dark ? "#A39786" : "#6B6255"

    readonly property color good: dark ? "#7FCB9E" : "#26734A"
    readonly property color warn: dark ? "#F0B063" : "#8F5200"
    readonly property color bad: dark ? "#F29385" : "#AC3327"
    readonly property color info: dark ? "#8ABFE8" : "#27628F"

    readonly property color focus: dark ? "#FFDB00" : "#201C17"
    readonly property color scrim: dark ? "#A8000000" : "#5C2B231A"
    readonly property color highlight: dark ? "#66580A" : "#FFEE94"
    readonly property color shadow: dark ? "#000000" : "#3D2E17"

    /// What text stands on: the accent, but for tones in the middle, which neither ink nor white can be read on.
    readonly property color accentFill: readable(accent, onColor(accent), 4.5)
    readonly property color accentInk: onColor(accentFill)
    /// An alias, since a binding to a name like this one would be taken for a signal's handler.
    property alias onAccent: theme.accentInk
    readonly property color accentEdge: mix(accent, darkest, 0.22)
    /// Takes `ink` only.
    readonly property color accentSoft: mix(paper, accent, dark ? 0.15 : 0.24)
    readonly property color accentText: readable(accent, dark ? raised : desk, 4.6)
    /// Rings, ticks and borders.
    readonly property color accentMark: readable(accent, dark ? raised : desk, 3.05)

    readonly property color hoverTint: alpha(ink, 0.05)
    readonly property color pressTint: alpha(ink, 0.09)
    readonly property real disabledOpacity: 0.45

    readonly property list<color> heat: dark ? darkHeat : lightHeat
    readonly property list<color> lightHeat: ["#EFE8DA", "#FFEFA3", "#FFDB00", "#C79C00", "#7C5D00"]
    readonly property list<color> darkHeat: ["#3A342C", "#5A4D14", "#8A750F", "#C4A806", "#FFDB00"]

    readonly property string ui: "Inter"
    /// From 24 pixels on.
    readonly property string display: "Inter Display"

    /// Fades of colour stay with reduced motion; whatever moves does not.
    readonly property int hover: 120
    readonly property int select: reduceMotion ? 0 : 160
    readonly property int turn: reduceMotion ? 0 : 200
    readonly property int slide: reduceMotion ? 0 : 240

    readonly property color darkest: "#201C17"

    /// `a` at 0, `b` at 1; opaque.
    function mix(a: color, b: color, t: real): color {
        const x = asColor(a), y = asColor(b);
        return Qt.rgba(x.r + (y.r - x.r) * t, x.g + (y.g - x.g) * t, x.b + (y.b - x.b) * t, 1);
    }

    /// The fill under text in a state's colour.
    function soft(state: color): color { return mix(paper, state, dark ? 0.18 : 0.11); }

    function alpha(c: color, a: real): color {
        const x = asColor(c);
        return Qt.rgba(x.r, x.g, x.b, a);
    }

    /// Contrast ratio from 1 to 21.
    function contrast(a: color, b: color): real {
        const x = luminance(a), y = luminance(b);
        return (Math.max(x, y) + 0.05) / (Math.min(x, y) + 0.05);
    }

    /// `c` shifted towards ink or white no further than it takes to reach `ratio` on `on`.
    function readable(c: color, on: color, ratio: real): color {
        const end = onColor(on);
        for (let t = 0; t < 1; t += 0.01) {
            const shifted = mix(c, end, t);
            if (contrast(shifted, on) >= ratio)
                return shifted;
        }
        return end;
    }

    /// Ink or white, whichever contrasts more with `c`.
    function onColor(c: color): color {
        return contrast(c, darkest) >= contrast(c, "#FFFFFF") ? asColor(darkest) : asColor("#FFFFFF");
    }

    function luminance(c: color): real {
        const x = asColor(c);
        return 0.2126 * linear(x.r) + 0.7152 * linear(x.g) + 0.0722 * linear(x.b);
    }

    function linear(channel: real): real {
        return channel <= 0.03928 ? channel / 12.92 : Math.pow((channel + 0.055) / 1.055, 2.4);
    }

    /// Callers may give a colour by name; tinting with nothing makes a colour of it.
    function asColor(c: color): color { return Qt.tint(c, "transparent"); }
}
