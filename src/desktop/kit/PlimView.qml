import QtQuick
import Tessary.Companion

/// The companion in motion. `play("win")` asks for a reaction; `reaction` is the one that was asked for last, and may
/// be bound instead. With reduced motion it is a picture. `covered` is for whatever lies over it, `paused` holds it.
PlimItem {
    dark: Theme.dark
    still: Theme.reduceMotion
    Accessible.role: Accessible.Graphic
    Accessible.name: "Plim"
}
