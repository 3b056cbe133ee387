import QtQuick
import QtQuick.Shapes
import QtQuick.Window

/// A share of the whole as an arc; what is inside it says the number.
Item {
    id: ring

    property real value: 0
    property real size: 56
    property real thickness: 6
    property color mark: Theme.accentMark
    property color track: Theme.line
    /// What the share is of.
    property string label
    default property alias content: inner.data

    property real shown: Math.max(0, Math.min(1, value))
    Behavior on shown { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutQuint } }

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label
    Accessible.description: qsTr("%1 %").arg(Math.round(value * 100))

    Shape {
        width: ring.size
        height: ring.size
        layer.enabled: GraphicsInfo.api !== GraphicsInfo.Software
        layer.samples: 4
        layer.smooth: true
        layer.textureSize: Qt.size(Math.ceil(ring.size * 2 * Screen.devicePixelRatio),
                                   Math.ceil(ring.size * 2 * Screen.devicePixelRatio))

        ShapePath {
            strokeColor: ring.track
            strokeWidth: ring.thickness
            fillColor: "transparent"
            PathAngleArc {
                centerX: ring.size / 2
                centerY: ring.size / 2
                radiusX: (ring.size - ring.thickness) / 2
                radiusY: radiusX
                startAngle: 0
                sweepAngle: 360
            }
        }
        ShapePath {
            strokeColor: ring.shown > 0 ? ring.mark : "transparent"
            strokeWidth: ring.thickness
            fillColor: "transparent"
            capStyle: ShapePath.RoundCap
            PathAngleArc {
                centerX: ring.size / 2
                centerY: ring.size / 2
                radiusX: (ring.size - ring.thickness) / 2
                radiusY: radiusX
                startAngle: -90
                sweepAngle: 360 * ring.shown
            }
        }
    }
    Item {
        id: inner
        anchors.fill: parent
    }
}
