import QtQuick
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// A setting that is a line of text. Emptied, it goes back to its default.
SettingRow {
    id: row

    required property Desk desk
    required property string key
    /// What an empty field stands for, where that is no default of the settings'.
    property string emptyText

    problem: setting.problem

    function take() {
        const wanted = field.text.trim();
        if (wanted === "")
            setting.reset();
        else if (wanted !== setting.text)
            setting.set(wanted);
        field.text = row.shownText();
    }
    /// A default stands in the field as its placeholder.
    function shownText(): string { return setting.isDefault ? "" : setting.text }

    Setting {
        id: setting
        desk: row.desk
        key: row.key
        onChanged: field.text = row.shownText()
    }
    Field {
        id: field
        implicitWidth: 260
        invalid: setting.problem !== ""
        placeholderText: setting.defaultText !== "" ? setting.defaultText : row.emptyText
        Accessible.name: row.title
        Accessible.description: row.detail
        Component.onCompleted: text = row.shownText()
        onEditingFinished: row.take()
        Keys.onEscapePressed: {
            field.text = row.shownText();
            setting.forgetProblem();
        }
    }
}
