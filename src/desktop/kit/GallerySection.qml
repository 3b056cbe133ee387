import QtQuick
import QtQuick.Layouts

/// A headed group of the gallery; what it holds flows.
ColumnLayout {
    id: section

    property string heading
    property real gap: 16
    default property alias content: flow.data

    spacing: 12
    Layout.fillWidth: true

    Txt {
        text: section.heading
        size: 15
        weight: 600
    }
    Flow {
        id: flow
        spacing: section.gap
        Layout.fillWidth: true
    }
    Divider {
        Layout.fillWidth: true
        Layout.topMargin: 12
    }
}
