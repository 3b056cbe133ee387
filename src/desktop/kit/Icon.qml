import QtQuick
import QtQuick.Shapes
import QtQuick.Window

/// One of `Icons`, drawn into a layer at twice the device pixels so that strokes stay even without multisampling. The
/// software renderer loses layers on dense displays, and draws a shape in full where it is clipped altogether; there a
/// canvas stands in.
Item {
    id: icon

    property string name
    property real size: 20
    property color color: Theme.ink2
    /// A filled star marks a favourite, an outlined one does not.
    property bool filled: false

    readonly property bool software: GraphicsInfo.api === GraphicsInfo.Software
    readonly property real stroke: name === "more" ? 2.2 : 1.5
    readonly property int textureSide: Math.ceil(size * 2 * Screen.devicePixelRatio)

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    Loader {
        active: icon.software
        sourceComponent: Canvas {
            id: canvas
            readonly property string outline: Icons.path(icon.name)
            readonly property color color: icon.color
            readonly property bool filled: icon.filled
            width: icon.size
            height: icon.size
            onOutlineChanged: requestPaint()
            onColorChanged: requestPaint()
            onFilledChanged: requestPaint()
            onPaint: {
                const context = canvas.getContext("2d");
                context.reset();
                context.scale(icon.size / 20, icon.size / 20);
                context.lineWidth = icon.stroke;
                context.lineCap = "round";
                context.lineJoin = "round";
                context.strokeStyle = icon.color;
                context.fillStyle = icon.color;
                context.path = canvas.outline;
                if (icon.filled)
                    context.fill();
                context.stroke();
            }
        }
    }
    Shape {
        visible: !icon.software
        anchors.centerIn: parent
        width: icon.size
        height: icon.size
        layer.enabled: !icon.software
        layer.samples: 4
        layer.smooth: true
        layer.textureSize: Qt.size(icon.textureSide, icon.textureSide)

        ShapePath {
            scale: Qt.size(icon.size / 20, icon.size / 20)
            strokeColor: icon.color
            strokeWidth: icon.stroke
            fillColor: icon.filled ? icon.color : "transparent"
            capStyle: ShapePath.RoundCap
            joinStyle: ShapePath.RoundJoin
            PathSvg { path: Icons.path(icon.name) }
        }
    }
}
