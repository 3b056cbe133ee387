import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Settings

/// How far an export or import is, and what became of the last one.
ColumnLayout {
    id: status

    required property LibraryExchangeModel exchange

    visible: exchange.busy || exchange.lastResult !== ""
    spacing: 8
    Layout.fillWidth: true

    RowLayout {
        visible: status.exchange.busy
        spacing: 12
        Txt {
            text: status.exchange.task + "…"
            weight: 500
        }
        Bar {
            label: status.exchange.task
            value: Math.max(0, status.exchange.progress)
            Layout.fillWidth: true
        }
        PushButton {
            controlSize: 28
            text: qsTr("Cancel")
            onClicked: status.exchange.cancel()
        }
    }
    Note {
        text: status.exchange.busy ? "" : status.exchange.lastResult
        tone: status.exchange.lastFailed ? "bad" : status.exchange.lastProblems.length > 0 ? "warn" : "good"
    }
    LineList {
        lines: status.exchange.busy ? [] : status.exchange.lastProblems
    }
}
