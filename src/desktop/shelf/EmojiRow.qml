import QtQuick
import Tessary.Kit
import Tessary.Shelf

/// Suggested emojis; none where the computer can't draw them.
Flow {
    id: row

    property string emoji
    signal picked(string emoji)

    readonly property int chosen: CoverChoices.emojis.indexOf(emoji)

    spacing: 2
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Suggested emojis")

    Repeater {
        id: faces
        model: CoverChoices.emojis
        delegate: PickButton {
            id: face
            required property int index
            required property string modelData

            implicitWidth: 28
            implicitHeight: 28
            chosen: index === row.chosen
            tabStop: chosen || (index === 0 && row.chosen < 0)
            siblings: faces
            place: index
            Accessible.name: modelData
            // A second press takes it away.
            onClicked: row.picked(chosen ? "" : modelData)

            background: Rectangle {
                radius: 6
                color: face.chosen ? Theme.accentSoft : face.down ? Theme.pressTint
                     : face.hovered ? Theme.hoverTint : "transparent"
                border.width: face.chosen ? 1 : 0
                border.color: Theme.accentMark
            }
            contentItem: Text {
                text: face.modelData
                font.family: "Noto Color Emoji"
                font.pixelSize: 16
                color: Theme.ink
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: true
            }
        }
    }
}
