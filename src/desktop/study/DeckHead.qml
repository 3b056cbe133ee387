import QtQuick
import QtQuick.Layouts
import Tessary.Kit

/// What the columns of the list are.
RowLayout {
    id: head

    property bool wide: true
    property real pageWidth: 150

    component Head: Txt {
        size: 12
        weight: 500
        color: Theme.ink3
    }

    spacing: 12
    Item { Layout.preferredWidth: 20 }
    Item { Layout.preferredWidth: 16 }
    Head {
        text: qsTr("Front")
        Layout.fillWidth: true
        Layout.preferredWidth: 3
    }
    Head {
        text: qsTr("Back")
        Layout.fillWidth: true
        Layout.preferredWidth: 2
    }
    Head {
        visible: head.wide
        text: qsTr("Page")
        Layout.preferredWidth: head.pageWidth
    }
    Item { Layout.preferredWidth: 16 }
    Head {
        text: qsTr("Due")
        Layout.preferredWidth: 72
    }
    Head {
        text: qsTr("Recall")
        Layout.preferredWidth: 40
    }
    Head {
        visible: head.wide
        text: qsTr("Lasts")
        Layout.preferredWidth: 48
    }
    Item { Layout.preferredWidth: 28 }
}
