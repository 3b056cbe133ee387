import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Review

/// A field for each blank; Return goes on to the next, and from the last to the check.
ColumnLayout {
    id: form

    required property ReviewModel review
    readonly property bool checking: review.state === "checking"
    readonly property Item focusTarget: fields.count > 0 ? fields.itemAt(0) : null

    function submit() {
        form.review.answerTyped(Array.from({ length: fields.count }, (_, at) => fields.itemAt(at).text));
    }

    spacing: 8

    Repeater {
        id: fields
        model: form.review.card.blanks
        delegate: Field {
            id: field
            required property int index
            readonly property bool last: index === fields.count - 1

            implicitHeight: 44
            font.pixelSize: 15
            enabled: !form.checking
            placeholderText: fields.count === 1 ? qsTr("Your answer") : qsTr("Blank %1").arg(index + 1)
            Layout.fillWidth: true
            Keys.onReturnPressed: last ? form.submit() : fields.itemAt(index + 1).forceActiveFocus()
            Keys.onEnterPressed: last ? form.submit() : fields.itemAt(index + 1).forceActiveFocus()

            Connections {
                target: form.review
                function onDealt() { field.clear(); }
            }
        }
    }
    RowLayout {
        opacity: form.checking ? 1 : 0
        spacing: 8
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: 8

        BusyDots { running: form.checking }
        Txt {
            text: qsTr("Checking your answer…")
            weight: 500
            color: Theme.ink2
        }
    }
}
