import QtQuick
import QtQuick.Layouts

/// Colours with their contrast, type sizes, pictures.
ColumnLayout {
    id: tokens

    readonly property var surfaces: ["desk", "paper", "raised", "sunken", "line", "edge", "highlight"]
    readonly property var inks: ["ink", "ink2", "ink3", "good", "warn", "bad", "info", "focus"]
    readonly property var accents: ["accent", "onAccent", "accentEdge", "accentSoft", "accentText", "accentMark"]

    spacing: 24

    component Token: Column {
        id: token
        required property string modelData
        readonly property color value: Theme[modelData]
        spacing: 4
        Rectangle {
            width: 112
            height: 48
            radius: 10
            color: token.value
            border.width: 1
            border.color: Theme.line
        }
        Txt {
            text: token.modelData
            weight: 600
        }
        Txt {
            text: qsTr("%1 on paper").arg(Theme.contrast(token.value, Theme.paper).toFixed(1))
            size: 12
            color: Theme.ink3
        }
    }

    GallerySection {
        heading: qsTr("Surfaces and lines")
        Repeater { model: tokens.surfaces; delegate: Token {} }
    }
    GallerySection {
        heading: qsTr("Inks and states")
        Repeater { model: tokens.inks; delegate: Token {} }
    }
    GallerySection {
        heading: qsTr("Accent")
        Repeater { model: tokens.accents; delegate: Token {} }
    }
    GallerySection {
        heading: qsTr("Heat")
        gap: 4
        Repeater {
            model: Theme.heat.length
            delegate: Rectangle {
                required property int index
                width: 32
                height: 32
                radius: 6
                color: Theme.heat[index]
            }
        }
    }
    GallerySection {
        heading: qsTr("Type")
        Repeater {
            model: [12, 13, 15, 18, 24, 32, 56]
            delegate: Column {
                id: sample
                required property int modelData
                Txt { text: qsTr("Recall"); size: sample.modelData; weight: sample.modelData >= 24 ? 700 : 400 }
                Txt { text: sample.modelData; size: 12; color: Theme.ink3 }
            }
        }
        Column {
            Numeral { text: "1 111"; size: 24; weight: 700 }
            Numeral { text: "2 084"; size: 24; weight: 700 }
            Txt { text: qsTr("Digits of one width"); size: 12; color: Theme.ink3 }
        }
    }
    GallerySection {
        heading: qsTr("Icons")
        gap: 8
        Repeater {
            model: Icons.names
            delegate: Item {
                id: cell
                required property string modelData
                width: 76
                height: 56
                Icon {
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: 6
                    name: cell.modelData
                }
                Txt {
                    anchors.bottom: parent.bottom
                    width: parent.width
                    horizontalAlignment: Text.AlignHCenter
                    text: cell.modelData
                    size: 12
                    color: Theme.ink3
                }
            }
        }
        Row {
            spacing: 12
            Repeater {
                model: [12, 16, 20, 24, 32, 40]
                delegate: Icon { required property int modelData; name: "study"; size: modelData }
            }
            Icon { name: "star"; filled: true; color: Theme.accentMark }
        }
    }
}
