import QtQuick
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// A setting that is a number, written or stepped.
SettingRow {
    id: row

    required property Desk desk
    required property string key

    problem: setting.problem

    function take() {
        if (field.text !== setting.text)
            setting.set(field.text.trim());
        field.text = setting.text;
    }

    Setting {
        id: setting
        desk: row.desk
        key: row.key
        onChanged: field.text = text
    }
    IconButton {
        iconName: "minus"
        label: qsTr("Less: %1").arg(row.title)
        enabled: setting.text !== "" && setting.canStepBy(-1)
        onClicked: setting.stepBy(-1)
    }
    Field {
        id: field
        implicitWidth: 72
        horizontalAlignment: TextInput.AlignHCenter
        inputMethodHints: Qt.ImhFormattedNumbersOnly
        invalid: setting.problem !== ""
        Accessible.name: row.title
        Accessible.description: row.detail
        text: setting.text
        onEditingFinished: row.take()
        Keys.onUpPressed: setting.stepBy(1)
        Keys.onDownPressed: setting.stepBy(-1)
        Keys.onEscapePressed: {
            field.text = setting.text;
            setting.forgetProblem();
        }
    }
    IconButton {
        iconName: "plus"
        label: qsTr("More: %1").arg(row.title)
        enabled: setting.text !== "" && setting.canStepBy(1)
        onClicked: setting.stepBy(1)
    }
}
