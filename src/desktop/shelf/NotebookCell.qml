import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Shelf

/// One notebook on the shelf: its cover on the board, name and counts below.
T.AbstractButton {
    id: cell

    required property int index
    required property string notebookId
    required property string name
    required property string subtitle
    required property string emoji
    required property string color
    required property string accent
    required property string material
    required property string pattern
    required property string labelStyle
    required property bool band
    required property bool ribbon
    required property string coverImage
    required property int pages
    required property string pagesText
    required property int due
    required property bool pinned
    required property bool isLoose

    property bool byKey: false
    /// Where its menu opens.
    property point menuPoint: Qt.point(cover.x + 40, cover.y + 100)
    signal menuAsked()

    readonly property bool ringed: visualFocus || (activeFocus && byKey)
    readonly property bool lifted: !Theme.reduceMotion && (hovered || ringed) && !down
    readonly property list<string> spoken: [name, subtitle, pagesText, dueText, pinned ? qsTr("pinned") : ""]
    readonly property string dueText: due > 0 ? qsTr("%1 due").arg(due) : ""

    focusPolicy: GridView.isCurrentItem || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    text: name
    Accessible.role: Accessible.Button
    Accessible.name: spoken.filter(each => each !== "").join(", ")
    Accessible.onPressAction: cell.clicked()

    CoverItem {
        id: cover
        x: Math.round((cell.width - width) / 2)
        y: cell.lifted ? 7 : 12
        width: 144
        height: 190
        notebookId: cell.notebookId
        title: cell.name
        subtitle: cell.subtitle
        emoji: cell.emoji
        color: cell.color
        accent: cell.accent
        material: cell.material
        pattern: cell.pattern
        labelStyle: cell.labelStyle
        band: cell.band
        ribbon: cell.ribbon
        coverImage: cell.coverImage
        dark: Theme.dark
        Behavior on y { NumberAnimation { duration: Theme.hover; easing.type: Easing.OutQuad } }

        FocusRing {
            target: cell
            shown: cell.ringed
            corner: 7
        }
    }

    ColumnLayout {
        x: cover.x
        y: 232
        width: Math.min(cell.width - x - 4, 168)
        spacing: 1

        RowLayout {
            spacing: 4
            Txt {
                text: cell.name
                weight: 600
                Layout.fillWidth: !pin.visible || implicitWidth > 140
                Accessible.ignored: true
            }
            Icon {
                id: pin
                visible: cell.pinned
                name: "pin"
                size: 14
                color: Theme.ink3
            }
            Item {
                visible: pin.visible
                Layout.fillWidth: true
            }
        }
        RowLayout {
            spacing: 4
            Txt {
                text: cell.pagesText
                size: 12
                color: Theme.ink3
                Accessible.ignored: true
            }
            Txt {
                visible: cell.due > 0
                text: "· " + cell.dueText
                size: 12
                weight: 600
                color: Theme.accentText
                Layout.fillWidth: true
                Accessible.ignored: true
            }
        }
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: point => { cell.menuPoint = point.position; cell.menuAsked() }
    }
    HoverHandler { cursorShape: Qt.PointingHandCursor }
}
