import QtQuick
import QtQuick.Shapes
import QtQuick.Window

/// One of `Icons`, drawn into a layer at twice the device pixels so that strokes stay even without multisampling. The
/// software renderer smooths shapes itself, and loses layers on dense displays.
Item {
    id: icon

    property string name
    property real size: 20
    property color color: Theme.ink2
    /// A filled star marks a favourite, an outlined one does not.
    property bool filled: false

    readonly property int textureSide: Math.ceil(size * 2 * Screen.devicePixelRatio)

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    Shape {
        anchors.centerIn: parent
        width: icon.size
        height: icon.size
        layer.enabled: GraphicsInfo.api !== GraphicsInfo.Software
        layer.samples: 4
        layer.smooth: true
        layer.textureSize: Qt.size(icon.textureSide, icon.textureSide)

        ShapePath {
            scale: Qt.size(icon.size / 20, icon.size / 20)
            strokeColor: icon.color
            strokeWidth: icon.name === "more" ? 2.2 : 1.5
            fillColor: icon.filled ? icon.color : "transparent"
            capStyle: ShapePath.RoundCap
            joinStyle: ShapePath.RoundJoin
            PathSvg { path: Icons.path(icon.name) }
        }
    }
}
