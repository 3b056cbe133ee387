import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// One provider; the one in use is open and shows what can be set of it.
Surface {
    id: card

    required property Desk desk
    required property AIEngineModel engine
    required property string kind
    required property string label
    required property string badge
    required property string description
    required property var notes
    required property var steps
    required property string privacy
    required property string modelKey
    required property string addressKey
    required property bool isChosen
    required property bool needsKey
    required property bool hasKey
    required property string readiness
    required property string problem
    required property bool saving
    required property string keyNote
    required property bool keyFailed
    required property string trial
    required property string trialNote

    implicitHeight: column.implicitHeight
    stroke: isChosen ? Theme.accentMark : Theme.line
    strokeWidth: isChosen ? 2 : 1

    ColumnLayout {
        id: column
        anchors { left: parent.left; right: parent.right; top: parent.top }
        spacing: 0

        T.AbstractButton {
            id: header
            Layout.fillWidth: true
            implicitHeight: words.implicitHeight + 24
            focusPolicy: Qt.StrongFocus
            text: card.label
            Accessible.role: Accessible.RadioButton
            Accessible.name: card.label
            Accessible.description: chip.text
            Accessible.checkable: true
            Accessible.checked: card.isChosen
            Accessible.onPressAction: header.clicked()
            Keys.onReturnPressed: header.clicked()
            onClicked: card.engine.choose(card.kind)

            background: Rectangle {
                radius: 10
                color: header.down ? Theme.pressTint : header.hovered && !card.isChosen ? Theme.hoverTint
                                                                                        : "transparent"
                FocusRing { target: header; corner: 10 }
            }
            Rectangle {
                x: 16
                y: 12
                width: 20
                height: 20
                radius: 10
                color: card.isChosen ? Theme.accent : Theme.raised
                border.width: card.isChosen ? 1 : 1.5
                border.color: card.isChosen ? Theme.accentMark : Theme.edge
                Rectangle {
                    visible: card.isChosen
                    anchors.centerIn: parent
                    width: 8
                    height: 8
                    radius: 4
                    color: Theme.onAccent
                }
            }
            Column {
                id: words
                x: 48
                y: 12
                width: chip.x - x - 16
                Row {
                    spacing: 8
                    Txt {
                        height: 20
                        text: card.label
                        weight: 600
                        verticalAlignment: Text.AlignVCenter
                        Accessible.ignored: true
                    }
                    Txt {
                        height: 20
                        text: card.badge
                        size: 12
                        color: Theme.ink3
                        verticalAlignment: Text.AlignVCenter
                    }
                }
                Txt {
                    visible: text !== ""
                    width: parent.width
                    text: card.description
                    color: Theme.ink2
                    wrap: true
                }
            }
            Chip {
                id: chip
                anchors.right: parent.right
                anchors.rightMargin: 16
                y: 10
                controlSize: 24
                tint: card.readiness === "ready" ? Theme.good : card.readiness === "missing" ? Theme.warn
                                                                                             : "transparent"
                text: card.readiness === "ready" ? qsTr("Ready") : card.readiness === "noKey" ? qsTr("Needs your key")
                    : card.readiness === "missing" ? qsTr("Not ready") : qsTr("Looking…")
            }
        }
        ProviderDetails {
            visible: card.isChosen
            card: card
            Layout.fillWidth: true
            Layout.leftMargin: 48
            Layout.rightMargin: 16
            Layout.bottomMargin: 12
        }
    }
}
