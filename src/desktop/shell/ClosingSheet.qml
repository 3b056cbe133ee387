import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// Keeps the window open when not everything could be saved: closing it then is the user's choice.
Sheet {
    id: sheet

    property string problem
    signal closeAnyway()

    function tell(sentence: string) {
        sheet.problem = sentence;
        sheet.open();
    }

    sheetWidth: 560
    iconName: "alert"
    title: qsTr("Your last changes are not saved")
    acceptText: qsTr("Try again")
    rejectText: qsTr("Keep working")
    otherText: qsTr("Close anyway")
    onOtherChosen: sheet.closeAnyway()

    Txt {
        text: sheet.problem
        wrap: true
        Layout.fillWidth: true
    }
    Txt {
        text: qsTr("If you close now, what could not be saved is lost. Is the disk full, or the folder protected?")
        wrap: true
        color: Theme.ink2
        Layout.fillWidth: true
    }
}
