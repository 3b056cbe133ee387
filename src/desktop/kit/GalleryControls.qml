import QtQuick
import QtQuick.Layouts

/// Buttons, fields and choices in every state.
ColumnLayout {
    id: controls

    spacing: 24

    /// A control with the ring it has under the keyboard.
    component Ringed: Item {
        id: ringed
        property real corner: 8
        default property alias content: slot.data
        implicitWidth: slot.childrenRect.width
        implicitHeight: slot.childrenRect.height
        Item { id: slot; anchors.fill: parent }
        FocusRing { shown: true; corner: ringed.corner }
    }

    Repeater {
        model: ["primary", "secondary", "ghost", "soft", "danger"]
        delegate: GallerySection {
            id: kinds
            required property string modelData
            heading: qsTr("Button, %1").arg(modelData)
            PushButton { kind: kinds.modelData; text: qsTr("Small"); controlSize: 28 }
            PushButton { kind: kinds.modelData; text: qsTr("Start review") }
            PushButton { kind: kinds.modelData; text: qsTr("Start review"); iconName: "study"; keyText: "R" }
            PushButton { kind: kinds.modelData; text: qsTr("Large"); iconName: "study"; keyText: "R"; controlSize: 44 }
            PushButton { kind: kinds.modelData; text: qsTr("Hovered"); lit: true }
            PushButton { kind: kinds.modelData; text: qsTr("Pressed"); down: true }
            PushButton { kind: kinds.modelData; text: qsTr("Disabled"); iconName: "study"; enabled: false }
            Ringed { PushButton { kind: kinds.modelData; text: qsTr("Focused") } }
            PushButton { kind: kinds.modelData; text: qsTr("A label too long for its place"); width: 128 }
        }
    }
    GallerySection {
        heading: qsTr("Icon button")
        IconButton { iconName: "more"; label: qsTr("More"); controlSize: 28 }
        IconButton { iconName: "sidebar"; label: qsTr("Sidebar") }
        IconButton { iconName: "close"; label: qsTr("Close"); controlSize: 36 }
        IconButton { iconName: "pen"; label: qsTr("Pen"); checkable: true; checked: true }
        IconButton { iconName: "star"; label: qsTr("Favorite"); checkable: true; checked: true }
        IconButton { iconName: "pen"; label: qsTr("Hovered"); lit: true }
        IconButton { iconName: "pen"; label: qsTr("Pressed"); down: true }
        IconButton { iconName: "pen"; label: qsTr("Disabled"); enabled: false }
        Ringed { IconButton { iconName: "pen"; label: qsTr("Focused") } }
    }
    GallerySection {
        heading: qsTr("Fields")
        Field { placeholderText: qsTr("Empty") }
        Field { text: qsTr("Light reactions") }
        Field { text: qsTr("Not a colour"); invalid: true }
        Field { text: qsTr("Disabled"); enabled: false }
        SearchField { placeholderText: qsTr("Search"); keyText: "Ctrl K" }
        SearchField { text: qsTr("photo") }
        Dropdown { model: [qsTr("Local model, 7B"), qsTr("Another"), qsTr("A third")] }
        Dropdown { model: [qsTr("Disabled")]; enabled: false }
        TextBox { placeholderText: qsTr("What should the cards ask?") }
        TextBox { text: qsTr("What happens to the protons, and the order of the carriers") + "\n\n\n\n\n\n\n\n\n\n\n." }
    }
    GallerySection {
        heading: qsTr("Choices")
        Choice { model: [qsTr("Gentle"), qsTr("Exam level"), qsTr("Stretch")]; currentIndex: 1 }
        Choice { model: [qsTr("Day"), qsTr("Week"), qsTr("Month")]; width: 320 }
        Choice { model: [qsTr("One"), qsTr("Two")]; enabled: false }
        Ringed { Choice { model: [qsTr("System"), qsTr("Light"), qsTr("Dark")]; currentIndex: 2 } }
        Toggle {}
        Toggle { checked: true }
        Toggle { text: qsTr("Read aloud"); checked: true }
        Toggle { text: qsTr("Disabled"); enabled: false }
        Ringed { corner: 10; Toggle { height: 20; checked: true } }
        Check { text: qsTr("Reread Energy carriers") }
        Check { text: qsTr("Done"); checked: true }
        Check { text: qsTr("Disabled"); checked: true; enabled: false }
        Fader { value: 0.48; Accessible.name: qsTr("Amount") }
        Fader { value: 0.2; enabled: false; Accessible.name: qsTr("Amount") }
    }
    GallerySection {
        heading: qsTr("Chips")
        gap: 8
        Chip { text: "photosynthesis"; controlSize: 24 }
        Chip { text: qsTr("exam 2"); tint: Theme.warn; controlSize: 24 }
        Chip { text: qsTr("On this computer"); tint: Theme.good }
        Chip { text: qsTr("Unsure"); tint: Theme.info }
        Chip { text: qsTr("Failed"); tint: Theme.bad; iconName: "alert" }
        Chip { text: qsTr("Light reactions"); iconName: "page"; checkable: true; checked: true; closable: true }
        Chip { text: qsTr("Due"); checkable: true }
        Chip { text: qsTr("Due"); checkable: true; checked: true }
        Chip { text: qsTr("Disabled"); checkable: true; enabled: false }
        Chip { text: qsTr("Tag"); iconName: "plus"; focusPolicy: Qt.StrongFocus }
        Ringed { corner: 14; Chip { text: qsTr("Focused"); checkable: true } }
    }
}
