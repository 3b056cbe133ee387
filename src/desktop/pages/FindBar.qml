import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Pages

/// Looks for words in the text of the page.
Surface {
    id: bar

    required property PageText text
    property bool open: false
    /// The cursor of the text.
    property int position: 0
    signal foundAt(int position, int length)
    signal closed()

    function ask(selected: string) {
        bar.open = true;
        if (selected !== "" && !selected.includes("\u2029") && !selected.includes("\n"))
            field.text = selected;
        field.forceActiveFocus();
        field.selectAll();
    }
    function close() {
        bar.open = false;
        field.text = "";
        bar.closed();
    }
    function go(place: int) {
        if (place >= 0)
            bar.foundAt(place, field.text.length);
    }
    function next() { bar.go(bar.text.next(bar.position)); }
    function previous() { bar.go(bar.text.previous(bar.position - field.text.length)); }

    visible: open
    implicitWidth: 380
    implicitHeight: 48
    elevation: 2
    stroke: Theme.edge

    RowLayout {
        anchors.fill: parent
        anchors.margins: 6
        spacing: 2
        Field {
            id: field
            Layout.fillWidth: true
            placeholderText: qsTr("Find on the page")
            invalid: text !== "" && bar.text.found === 0
            onTextChanged: {
                bar.text.wanted = text;
                bar.go(bar.text.next(Math.max(0, bar.position - text.length)));
            }
            Keys.onReturnPressed: event => event.modifiers & Qt.ShiftModifier ? bar.previous() : bar.next()
            Keys.onEnterPressed: bar.next()
            Keys.onDownPressed: bar.next()
            Keys.onUpPressed: bar.previous()
            Keys.onEscapePressed: bar.close()
        }
        Txt {
            Layout.leftMargin: 6
            Layout.preferredWidth: 64
            horizontalAlignment: Text.AlignHCenter
            text: field.text === "" ? "" : bar.text.found === 0 ? qsTr("No match")
                : qsTr("%1 of %2").arg(bar.text.current + 1).arg(bar.text.found)
            size: 12
            color: Theme.ink3
        }
        IconButton {
            iconName: "up"
            label: qsTr("Previous match")
            enabled: bar.text.found > 0
            onClicked: bar.previous()
        }
        IconButton {
            iconName: "down"
            label: qsTr("Next match")
            enabled: bar.text.found > 0
            onClicked: bar.next()
        }
        IconButton {
            iconName: "close"
            label: qsTr("Close the search")
            onClicked: bar.close()
        }
    }
}
