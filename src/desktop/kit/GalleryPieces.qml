import QtQuick
import QtQuick.Layouts

/// Surfaces, measures, menus, sheets, messages.
ColumnLayout {
    id: pieces

    /// Where messages are to appear.
    property ToastHost toasts

    spacing: 24

    GallerySection {
        heading: qsTr("Surfaces")
        gap: 40
        Repeater {
            model: 4
            delegate: Surface {
                id: card
                required property int index
                elevation: index
                radius: index > 1 ? 16 : 10
                padding: 24
                Txt { text: qsTr("Elevation %1").arg(card.index) }
            }
        }
    }
    GallerySection {
        heading: qsTr("Measures")
        gap: 24
        Repeater {
            model: [0, 0.04, 0.44, 0.72, 1]
            delegate: Ring {
                id: ring
                required property double modelData
                value: modelData
                mark: modelData < 0.5 ? Theme.bad : modelData < 0.9 ? Theme.accentMark : Theme.good
                label: qsTr("Recall")
                Numeral { anchors.centerIn: parent; text: Math.round(ring.value * 100) + "%" }
            }
        }
        Ring {
            size: 112
            thickness: 10
            value: 18 / 25
            label: qsTr("Goal")
            Column {
                anchors.centerIn: parent
                Numeral { anchors.horizontalCenter: parent.horizontalCenter; text: "18"; size: 32; weight: 700 }
                Txt { text: qsTr("of 25 min"); size: 12; color: Theme.ink3 }
            }
        }
        Column {
            spacing: 12
            Repeater {
                model: [0, 0.02, 0.48, 1]
                delegate: Bar {
                    required property double modelData
                    width: 160
                    value: modelData
                    label: qsTr("Recall")
                }
            }
            Bar { width: 160; value: 0.6; fill: Theme.warn; label: qsTr("Recall") }
        }
        Row {
            spacing: 8
            Kbd { text: "R" }
            Kbd { text: "Ctrl K" }
            Divider { vertical: true; height: 20 }
            Repeater {
                model: ["#4F7F57", "#7A3E2B", "#FFDB00", "#35528F", "#201C17", "#F4EEE3"]
                delegate: Swatch { required property string modelData; color: modelData }
            }
            Swatch { color: "#4F7F57"; size: 24 }
        }
    }
    GallerySection {
        heading: qsTr("What opens")
        PushButton {
            text: qsTr("Menu")
            iconName: "more"
            onClicked: menu.open()
            PopupMenu {
                id: menu
                objectName: "galleryMenu"
                y: parent.height + 4
                PopupMenuItem { text: qsTr("Rename"); iconName: "pen"; keyText: "F2" }
                PopupMenuItem { text: qsTr("Move to another notebook"); iconName: "arrow" }
                PopupMenuItem { text: qsTr("Show card counts"); checkable: true; checked: true }
                PopupMenuItem { text: qsTr("Disabled"); iconName: "lock"; enabled: false }
                PopupMenuLine {}
                PopupMenuItem { text: qsTr("Move to the Trash"); iconName: "trash"; danger: true; keyText: "Del" }
            }
        }
        PushButton {
            text: qsTr("Sheet")
            onClicked: form.open()
        }
        PushButton {
            text: qsTr("Dangerous sheet")
            onClicked: question.open()
        }
        PushButton {
            text: qsTr("Message")
            onClicked: pieces.toasts.show(qsTr("Moved “Calvin cycle” to the Trash."), qsTr("Undo"), null)
        }
    }
    GallerySection {
        heading: qsTr("Plim and nothing to show")
        gap: 40
        EmptyState { text: qsTr("There are no pages here yet."); actionText: qsTr("Write a page") }
        Repeater {
            model: [32, 48, 96, 160]
            delegate: Plim { required property int modelData; size: modelData }
        }
    }
    GallerySection {
        heading: qsTr("What Plim does; press one")
        gap: 8
        Repeater {
            model: ["idle", "wave", "cur", "think", "study", "win", "fail", "sleep"]
            delegate: PlimView {
                id: star
                required property string modelData
                size: 160
                reaction: modelData
                TapHandler { onTapped: star.play(star.modelData) }
            }
        }
    }

    Sheet {
        id: form
        objectName: "gallerySheet"
        title: qsTr("Generate study material")
        subtitle: qsTr("You check every card before it joins the deck.")
        iconName: "make"
        acceptText: qsTr("Generate 12")
        note: qsTr("6 flashcards and 6 cloze from 2 pages")
        Txt { text: qsTr("Focus"); weight: 600 }
        TextBox { placeholderText: qsTr("Optional"); Layout.fillWidth: true; focus: true }
        Txt { text: qsTr("Difficulty"); weight: 600 }
        Choice {
            model: [qsTr("Gentle"), qsTr("Exam level"), qsTr("Stretch")]
            currentIndex: 1
            Layout.fillWidth: true
        }
    }
    Sheet {
        id: question
        title: qsTr("Empty the trash?")
        acceptText: qsTr("Delete 2 pages")
        danger: true
        sheetWidth: 440
        Txt { text: qsTr("Two pages and their cards are gone for good."); wrap: true; Layout.fillWidth: true }
    }
}
