import QtQuick
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// A setting that is on or off.
SettingRow {
    id: row

    required property Desk desk
    required property string key

    problem: setting.problem

    Setting {
        id: setting
        desk: row.desk
        key: row.key
    }
    Toggle {
        checked: setting.value === true
        Accessible.name: row.title
        Accessible.description: row.detail
        onToggled: {
            if (!setting.set(checked ? "on" : "off"))
                checked = Qt.binding(() => setting.value === true)
        }
    }
}
