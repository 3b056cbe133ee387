import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages

/// Asks for the day on which a page expires.
Sheet {
    id: sheet

    required property PageModel page
    readonly property string words: page.dayInWords(day.text)

    function ask() {
        day.text = page.expiryDay;
        open();
        day.forceActiveFocus();
        day.selectAll();
    }

    sheetWidth: 440
    iconName: "calendar"
    title: qsTr("When does the page expire?")
    subtitle: qsTr("It stays where it is, and says so from that day on.")
    acceptText: qsTr("Set")
    acceptEnabled: words !== ""
    onAccepted: page.setExpiryDay(day.text)

    ColumnLayout {
        Layout.fillWidth: true
        spacing: 8
        Field {
            id: day
            Layout.fillWidth: true
            placeholderText: qsTr("Year-month-day")
            Accessible.name: qsTr("Day")
            invalid: text !== "" && sheet.words === ""
            onAccepted: sheet.acceptIfEnabled()
        }
        Txt {
            text: sheet.words !== "" ? sheet.words : qsTr("Such as 2027-01-31.")
            color: sheet.words !== "" ? Theme.ink2 : Theme.ink3
            Layout.fillWidth: true
        }
    }
}
