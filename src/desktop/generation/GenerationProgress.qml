import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Generation

/// How far the run is, or what came of it.
RowLayout {
    id: header

    required property GenerationModel generation

    readonly property bool running: generation.running
    readonly property bool failed: generation.phase === GenerationModel.Failed
    readonly property string detail: {
        if (running)
            return qsTr("%1 · %2").arg(generation.pageTitle).arg(generation.provider);
        if (failed)
            return generation.hint;
        if (generation.written === 0)
            return "";
        if (generation.phase === GenerationModel.Cancelled)
            return qsTr("What was written before is in the deck of this page. Untick what you don't want.");
        return generation.hasSummary ? qsTr("They are in the deck of this page, and a summary is on a page below it.")
                                     : qsTr("They are in the deck of this page. Untick what you don't want.");
    }

    spacing: 16

    Item {
        implicitWidth: 76
        implicitHeight: 64
        PlimBadge {
            anchors.centerIn: parent
            desk: header.generation.desk
            picture: true
            reaction: header.running ? "think" : header.failed ? "fail"
                    : header.generation.phase === GenerationModel.Done ? "win" : "idle"
            size: 88
        }
    }
    ColumnLayout {
        spacing: 4
        RowLayout {
            spacing: 12
            Icon {
                visible: !header.running
                name: header.failed ? "alert" : header.generation.phase === GenerationModel.Done ? "check" : "stop"
                color: header.failed ? Theme.bad : header.generation.phase === GenerationModel.Done ? Theme.good
                     : Theme.ink2
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: 2
            }
            Txt {
                text: header.running ? header.generation.progress : header.generation.outcome
                size: 15
                weight: 600
                wrap: header.failed
                Layout.fillWidth: true
                Accessible.role: header.failed ? Accessible.AlertMessage : Accessible.StaticText
            }
            Txt {
                visible: header.running && header.generation.written > 0
                text: header.generation.written === 1 ? qsTr("1 card so far")
                                                      : qsTr("%1 cards so far").arg(header.generation.written)
                color: Theme.ink2
            }
        }
        Bar {
            visible: header.running
            implicitHeight: 8
            value: header.generation.fraction
            label: header.generation.progress
            Layout.fillWidth: true
            Layout.topMargin: 4
            Layout.bottomMargin: 4
        }
        Txt {
            visible: text !== ""
            text: header.detail
            color: Theme.ink2
            Layout.fillWidth: true
        }
    }
}
