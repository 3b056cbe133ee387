import QtQuick
import QtQml
import Tessary.Search

/// The keys of every command. While a sheet is open they rest.
Item {
    id: keys

    required property CommandPalette palette

    Instantiator {
        model: keys.palette.commands
        delegate: Shortcut {
            required property Command modelData
            sequences: modelData.keys
            enabled: modelData.enabled && modelData.keys.length > 0
            onActivated: modelData.trigger()
        }
    }
}
