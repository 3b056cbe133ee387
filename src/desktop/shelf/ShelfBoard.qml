import QtQuick
import Tessary.Kit

/// The board a row of covers stands on, with the shadow below it.
Item {
    implicitHeight: 22

    Rectangle {
        width: parent.width
        height: 8
        radius: 2
        color: Theme.dark ? "#3A322A" : "#E6DAC4"

        Rectangle {
            width: parent.width
            height: 1
            color: Theme.dark ? "#52473B" : "#F7F0E2"
        }
        Rectangle {
            y: 7
            width: parent.width
            height: 1
            color: Theme.dark ? "#15110E" : "#CDBEA2"
        }
    }
    Rectangle {
        x: 4
        y: 8
        width: parent.width - 8
        height: 12
        gradient: Gradient {
            GradientStop { position: 0; color: Theme.alpha(Theme.shadow, Theme.dark ? 0.45 : 0.13) }
            GradientStop { position: 1; color: Theme.alpha(Theme.shadow, 0) }
        }
    }
}
