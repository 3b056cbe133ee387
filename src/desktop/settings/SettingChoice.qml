import QtQuick
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// A setting with one of some values: a few stand side by side, more in a list.
SettingRow {
    id: row

    required property Desk desk
    required property string key
    /// In the order shown; a value that is not among them is shown as it is, after them.
    required property list<string> values
    required property list<string> names

    readonly property bool known: values.indexOf(setting.text) >= 0
    readonly property var shownNames: known || setting.text === "" ? [...names] : [...names, setting.text]

    problem: setting.problem

    function pick(index: int) {
        if (index < row.values.length)
            setting.set(row.values[index]);
    }

    Setting {
        id: setting
        desk: row.desk
        key: row.key
    }
    Choice {
        visible: row.names.length <= 3
        model: row.names
        currentIndex: Math.max(0, row.values.indexOf(setting.text))
        Accessible.name: row.title
        onActivated: index => row.pick(index)
    }
    Dropdown {
        visible: row.names.length > 3
        implicitWidth: 220
        model: row.shownNames
        currentIndex: row.known ? row.values.indexOf(setting.text) : row.values.length
        Accessible.name: row.title
        Accessible.description: displayText
        onActivated: index => row.pick(index)
    }
}
