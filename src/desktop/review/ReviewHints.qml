import QtQuick
import Tessary.Kit
import Tessary.Review

/// The keys of this step.
Row {
    id: hints

    required property ReviewModel review
    readonly property string step: review.state
    readonly property bool choosing: review.card.options.length > 0
    readonly property bool free: step === "question" || step === "answer"

    spacing: 24

    KeyHint {
        visible: hints.step === "question" && hints.choosing
        keys: "1–%1".arg(hints.review.card.options.length)
        text: qsTr("choose")
    }
    KeyHint {
        visible: hints.step === "answer"
        keys: "1–4"
        text: qsTr("rate")
    }
    KeyHint {
        visible: hints.free
        keys: qsTr("Space")
        text: hints.step === "question" ? qsTr("turn") : hints.review.ratings[hints.review.suggested - 1]?.name ?? ""
    }
    KeyHint {
        visible: hints.step === "checking"
        keys: qsTr("Space")
        text: qsTr("don't wait")
    }
    KeyHint {
        visible: hints.step === "typing"
        keys: qsTr("Enter")
        text: qsTr("check")
    }
    KeyHint {
        visible: hints.free && hints.review.canUndo
        keys: "U"
        text: qsTr("undo")
    }
    KeyHint {
        visible: hints.free
        keys: "E"
        text: qsTr("edit")
    }
    KeyHint {
        visible: hints.free
        keys: "S"
        text: qsTr("suspend")
    }
    KeyHint {
        visible: hints.free
        keys: "F"
        text: qsTr("flag")
    }
    KeyHint {
        visible: hints.step === "answer"
        keys: "O"
        text: qsTr("open page")
    }
    KeyHint {
        visible: hints.step === "typing" || hints.step === "checking"
        keys: "Esc"
        text: qsTr("end")
    }
}
