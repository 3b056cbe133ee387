import QtQuick
import Tessary.Kit
import Tessary.Shelf

/// The offered colours; `automatic` puts a choice of none before them.
Flow {
    id: row

    /// As "#RRGGBB"; empty: none.
    property string color
    property bool automatic: false
    signal picked(string color)

    readonly property var none: automatic ? [{ color: "", name: qsTr("Automatic") }] : []
    readonly property var offers: none.concat(CoverChoices.colors)
    readonly property int chosen: offers.findIndex(offer => offer.color === CoverChoices.normalized(row.color))

    /// Of one dot with the gap after it.
    readonly property int pitch: 29
    spacing: 5
    Accessible.role: Accessible.Grouping

    Repeater {
        id: dots
        model: row.offers
        delegate: PickButton {
            id: dot
            required property int index
            required property var modelData

            implicitWidth: 24
            implicitHeight: 24
            label: modelData.name
            chosen: index === row.chosen
            tabStop: chosen || (index === 0 && row.chosen < 0)
            siblings: dots
            place: index
            onClicked: row.picked(modelData.color)

            background: Rectangle {
                radius: 12
                color: dot.modelData.color === "" ? Theme.raised : dot.modelData.color
                border.width: dot.chosen ? 2 : 1
                border.color: dot.chosen ? Theme.ink : dot.hovered ? Theme.ink3 : Theme.edge
                Icon {
                    anchors.centerIn: parent
                    visible: dot.chosen || dot.modelData.color === ""
                    name: dot.chosen ? "check" : "refresh"
                    size: 14
                    color: dot.modelData.color === "" ? Theme.ink2 : Theme.onColor(dot.modelData.color)
                }
            }
        }
    }
}
