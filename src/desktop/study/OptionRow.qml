import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// One option of a multiple choice, to be written, ticked as the right one, or taken away.
RowLayout {
    id: row

    property int number: 1
    property string text
    property bool isRight: false
    property bool removable: true
    signal edited(string text)
    signal ticked()
    signal removed()

    spacing: 8
    IconButton {
        iconName: "check"
        label: qsTr("Option %1 is right").arg(row.number)
        controlSize: 36
        tint: row.isRight ? Theme.good : Theme.edge
        Accessible.role: Accessible.RadioButton
        Accessible.checkable: true
        Accessible.checked: row.isRight
        onClicked: row.ticked()
    }
    Field {
        text: row.text
        placeholderText: qsTr("Option %1").arg(row.number)
        Layout.fillWidth: true
        onTextEdited: row.edited(text)
    }
    IconButton {
        visible: row.removable
        iconName: "close"
        label: qsTr("Take option %1 away").arg(row.number)
        controlSize: 36
        onClicked: row.removed()
    }
}
