import QtQuick
import QtQml
import Tessary.Search

/// The keys of every command. While a sheet is open they rest.
Item {
    id: keys

    required property CommandPalette commands

    Instantiator {
        // Their number, not the list itself: that would be made anew with each reset of the palette's rows.
        model: keys.commands.commands.length
        delegate: Shortcut {
            required property int index
            readonly property Command command: keys.commands.commands[index]
            sequences: Array.from(command.keys)
            enabled: command.enabled && command.keys.length > 0
            onActivated: command.trigger()
        }
    }
}
