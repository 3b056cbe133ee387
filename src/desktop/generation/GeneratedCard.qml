import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Generation

/// A card of the run: kept or not, and to be changed where it stands.
Item {
    id: card

    required property GenerationModel generation
    required property int index
    required property string kindName
    required property string front
    required property string back
    required property string source
    required property bool kept
    property bool editing: false
    signal edit()
    signal closed()

    /// Comes up from below after `delay` milliseconds.
    function arrive(delay: int) {
        wait.duration = delay;
        arrival.start();
    }

    implicitHeight: (editing ? form.implicitHeight : face.implicitHeight) + 24

    SequentialAnimation {
        id: arrival
        PropertyAction { target: surface; property: "opacity"; value: 0 }
        PauseAnimation { id: wait }
        ParallelAnimation {
            NumberAnimation { target: surface; property: "opacity"; to: 1; duration: Theme.turn }
            NumberAnimation {
                target: surface
                property: "y"
                from: 10
                to: 0
                duration: Theme.turn
                easing.type: Easing.OutCubic
            }
        }
    }

    Surface {
        id: surface
        width: card.width
        height: card.height

        RowLayout {
            id: face
            visible: !card.editing
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12; leftMargin: 16 }
            spacing: 16
            Check {
                checked: card.kept
                Accessible.name: qsTr("Keep “%1”").arg(card.front)
                onToggled: {
                    card.generation.setKept(card.index, checked);
                    checked = Qt.binding(() => card.kept);
                }
            }
            ColumnLayout {
                spacing: 2
                opacity: card.kept ? 1 : 0.6
                Txt {
                    text: card.front
                    weight: 600
                    wrap: true
                    maximumLineCount: 3
                    elide: Text.ElideRight
                    font.strikeout: !card.kept
                    Layout.fillWidth: true
                }
                Txt {
                    text: card.back
                    color: Theme.ink2
                    wrap: true
                    maximumLineCount: 2
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                RowLayout {
                    spacing: 6
                    Icon {
                        name: "page"
                        size: 14
                        color: Theme.ink3
                    }
                    Txt {
                        text: card.source
                        size: 12
                        color: Theme.ink3
                        Layout.fillWidth: true
                    }
                }
            }
            Chip {
                text: card.kindName
                controlSize: 24
            }
            IconButton {
                iconName: "pen"
                label: qsTr("Edit “%1”").arg(card.front)
                enabled: card.kept
                onClicked: card.edit()
            }
        }
        Loader {
            id: form
            active: card.editing
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
            sourceComponent: GeneratedCardEditor {
                generation: card.generation
                row: card.index
                onClosed: card.closed()
            }
        }
    }
}
