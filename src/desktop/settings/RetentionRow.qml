import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessary.Kit
import Tessary.Desk
import Tessary.Settings

/// How well the student wants to remember, and what that costs.
SettingRow {
    id: row

    required property Desk desk

    title: qsTr("Desired retention")
    detail: qsTr("How likely you want to remember a card when it comes back. At %3, a card that you "
               + "always know comes back after %1: %2 reviews in its first year.")
            .arg(outlook.intervals).arg(outlook.reviewsInYear).arg(qsTr("%1 %").arg(slider.value))
    problem: setting.problem

    Setting {
        id: setting
        desk: row.desk
        key: "flashcards.retention"
    }
    CardOutlook {
        id: outlook
        retention: slider.value / 100
    }
    T.Slider {
        id: slider

        function store() {
            if (Math.round(Number(setting.value) * 100) !== slider.value)
                setting.set((slider.value / 100).toFixed(2));
        }

        implicitWidth: 168
        implicitHeight: 28
        from: 70
        to: 97
        stepSize: 1
        snapMode: T.Slider.SnapAlways
        focusPolicy: Qt.StrongFocus
        value: Math.min(97, Math.max(70, Math.round(Number(setting.value ?? 0.9) * 100)))
        Accessible.role: Accessible.Slider
        Accessible.name: row.title
        Accessible.description: qsTr("%1 %").arg(value)
        onPressedChanged: if (!pressed) store()
        onMoved: if (!pressed) store()

        background: Rectangle {
            x: 8
            y: (slider.height - height) / 2
            width: slider.width - 16
            height: 4
            radius: 2
            color: Theme.line
            Rectangle {
                width: slider.visualPosition * parent.width
                height: 4
                radius: 2
                color: Theme.accentMark
            }
        }
        handle: Rectangle {
            x: slider.visualPosition * (slider.width - width)
            y: (slider.height - height) / 2
            implicitWidth: 20
            implicitHeight: 20
            radius: 10
            color: slider.pressed ? Theme.sunken : Theme.raised
            border.width: 1
            border.color: Theme.edge
            FocusRing { target: slider; corner: 10 }
        }
    }
    Txt {
        text: qsTr("%1 %").arg(slider.value)
        weight: 600
        horizontalAlignment: Text.AlignRight
        Layout.preferredWidth: 40
    }
}
