import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Generation

/// Tells of a run while its sheet is closed, until somebody has looked at what came of it.
T.AbstractButton {
    id: status

    required property GenerationModel generation
    property bool folded: false

    readonly property bool running: generation.running
    readonly property bool failed: generation.phase === GenerationModel.Failed

    visible: generation.phase !== GenerationModel.Idle
    implicitHeight: 40
    leftPadding: folded ? 0 : 10
    rightPadding: folded ? 0 : 10
    text: running ? qsTr("Writing cards…") : failed ? qsTr("No cards written") : generation.outcome
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: running ? generation.progress : ""
    Accessible.onPressAction: status.clicked()
    Keys.onReturnPressed: status.clicked()
    Keys.onEnterPressed: status.clicked()

    background: Surface {
        radius: 20
        fill: status.down ? Theme.mix(Theme.raised, Theme.ink, 0.09)
            : status.hovered ? Theme.mix(Theme.raised, Theme.ink, 0.05) : Theme.raised
        FocusRing { target: status; corner: 20 }
    }
    contentItem: RowLayout {
        spacing: 10
        Item {
            implicitWidth: 20
            implicitHeight: 20
            Layout.alignment: Qt.AlignCenter
            Ring {
                visible: status.running
                size: 20
                thickness: 3
                value: status.generation.fraction
                Accessible.ignored: true
            }
            Icon {
                visible: !status.running
                name: status.failed ? "alert" : "check"
                color: status.failed ? Theme.bad : Theme.good
            }
        }
        Txt {
            visible: !status.folded
            text: status.text
            weight: 600
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Txt {
            visible: !status.folded && status.running && status.generation.written > 0
            text: status.generation.written
            size: 12
            weight: 600
            color: Theme.ink3
            Accessible.ignored: true
        }
    }
    Tip {
        visible: status.folded && (status.hovered || status.visualFocus)
        text: status.text
    }
}
