import QtQuick
import QtQuick.Shapes
import QtQuick.Window

/// The companion, at rest. Drawn around its heart in a square of 160, then scaled.
Item {
    id: plim

    property real size: 64

    readonly property color ink: "#3A2148"
    readonly property int textureSide: Math.ceil(Math.max(96, size * 2) * Screen.devicePixelRatio)

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Graphic
    Accessible.name: "Plim"

    component Blade: ShapePath {
        id: blade
        property color from
        property color to
        property point start
        property point end
        property alias outline: svg.path
        strokeColor: "transparent"
        fillGradient: LinearGradient {
            x1: blade.start.x; y1: blade.start.y
            x2: blade.end.x; y2: blade.end.y
            GradientStop { position: 0; color: blade.from }
            GradientStop { position: 0.5; color: Theme.alpha(blade.to, 0.92) }
            GradientStop { position: 0.86; color: Theme.alpha(blade.to, 0.6) }
            GradientStop { position: 1; color: Theme.alpha(blade.to, 0.28) }
        }
        PathSvg { id: svg }
    }

    component Eye: Shape {
        id: eye
        property color ink: "#3A2148"
        ShapePath {
            strokeColor: eye.ink
            strokeWidth: 1.7
            fillGradient: LinearGradient {
                x1: 0; y1: -15
                x2: 0; y2: 12
                GradientStop { position: 0; color: "#E9DDF2" }
                GradientStop { position: 1; color: "#FFFDF8" }
            }
            PathSvg { path: "M-11.4 0a11.4 15 0 1 0 22.8 0a11.4 15 0 1 0 -22.8 0" }
        }
        ShapePath {
            strokeColor: "transparent"
            fillGradient: LinearGradient {
                x1: 0; y1: -11
                x2: 0; y2: 12
                GradientStop { position: 0; color: "#2A1538" }
                GradientStop { position: 0.45; color: "#43246A" }
                GradientStop { position: 0.85; color: "#9A5CD6" }
                GradientStop { position: 1; color: "#C879DF" }
            }
            PathSvg { path: "M-8.1 .6a8.9 11.6 0 1 0 17.8 0a8.9 11.6 0 1 0 -17.8 0" }
        }
        ShapePath {
            strokeColor: "transparent"
            fillColor: "#1E0E2B"
            PathSvg { path: "M-4.2 .6a5 6.5 0 1 0 10 0a5 6.5 0 1 0 -10 0" }
        }
        ShapePath {
            strokeColor: "transparent"
            fillColor: "white"
            PathSvg {
                path: "M.1 -4.1a3.5 4.1 0 1 0 7 0a3.5 4.1 0 1 0 -7 0M-4.2 4.9a1.7 1.9 0 1 0 3.4 0a1.7 1.9 0 1 0 -3.4 0"
            }
        }
        ShapePath {
            strokeColor: "transparent"
            fillColor: eye.ink
            PathSvg { path: "M-11.8 -2.7C-10.8 -21.5 10.8 -21.5 11.8 -2.7C9.3 -15.2 -9.3 -15.2 -11.8 -2.7Z" }
        }
    }

    component Cheek: Shape {
        ShapePath {
            strokeColor: "transparent"
            fillGradient: RadialGradient {
                centerRadius: 8.4
                GradientStop { position: 0; color: Theme.alpha("#FF6F8F", 0.75) }
                GradientStop { position: 1; color: Theme.alpha("#FF6F8F", 0) }
            }
            PathSvg { path: "M-9.2 0a9.2 6.3 0 1 0 18.4 0a9.2 6.3 0 1 0 -18.4 0" }
        }
    }

    Item {
        anchors.centerIn: parent
        width: 160
        height: 160
        // Small, it fills its square; what would reach beyond is only light.
        scale: plim.size / (plim.size <= 56 ? 132 : 160)
        layer.enabled: GraphicsInfo.api !== GraphicsInfo.Software
        layer.samples: 4
        layer.smooth: true
        layer.textureSize: Qt.size(plim.textureSide, plim.textureSide)

        Shape {
            x: 88
            y: 84
            ShapePath {
                strokeColor: "transparent"
                fillGradient: RadialGradient {
                    centerRadius: 72
                    GradientStop { position: 0.28; color: Theme.dark ? "#9EFFC46B" : "#80FFCB5C" }
                    GradientStop { position: 0.62; color: Theme.dark ? "#5CFF9E62" : "#47FFD27A" }
                    GradientStop { position: 0.82; color: Theme.dark ? "#24C66FA8" : "#1CFFD3B8" }
                    GradientStop { position: 1; color: Theme.dark ? "#00C66FA8" : "#00FFD3B8" }
                }
                PathSvg { path: "M-72 0a72 72 0 1 0 144 0a72 72 0 1 0 -144 0" }
            }
            Blade {
                from: "#8E97F5"
                to: "#B4BBFF"
                start: Qt.point(-19.5, -3.3)
                end: Qt.point(-76.4, 20.5)
                outline: "M-23.4 -17.8Q-47.3 11.1 -76.3 17.9Q-80.2 20.3 -76.5 23Q-41.7 32 -15.6 11.2Z"
            }
            Blade {
                from: "#FF7DBE"
                to: "#FFA9D8"
                start: Qt.point(-6.9, 18.6)
                end: Qt.point(-58.5, 58.5)
                outline: "M-17.5 8Q-30.4 40.9 -59.2 56.1Q-62.2 59.6 -57.9 61Q-15.1 56.1 3.7 29.2Z"
            }
            Blade {
                from: "#FFC02E"
                to: Theme.dark ? "#FFB07A" : "#FFD873"
                start: Qt.point(-15.6, 9)
                end: Qt.point(-79.7, 46)
                outline: "M-26.1 -9.2Q-47.4 28 -80.1 42.5Q-84.9 46.6 -79.2 49.5Q-32.3 54.1 -5.1 27.2Z"
            }
            ShapePath {
                strokeColor: Theme.dark ? "#F0B45F" : "#D97F2C"
                strokeWidth: 2.2
                joinStyle: ShapePath.RoundJoin
                fillGradient: RadialGradient {
                    centerX: 2; centerY: 2; centerRadius: 78
                    focalX: 12; focalY: -26; focalRadius: 4
                    GradientStop { position: 0; color: "#FFF8D6" }
                    GradientStop { position: 0.3; color: "#FFE680" }
                    GradientStop { position: 0.62; color: "#FFD046" }
                    GradientStop { position: 0.82; color: "#FFB035" }
                    GradientStop { position: 1; color: "#FA8F42" }
                }
                PathSvg {
                    path: "M-6.2 -71.7C6.7 -75.7 15.6 -41.8 25.3 -34.8C35 -27.7 63.5 -30.4 67.5 -16.5"
                        + "C71.5 -2.5 43.7 1.6 39.9 13C36.2 24.4 48.6 41.5 36.1 51.6C23.7 61.7 13 44 0 44"
                        + "C-13 44 -23.7 61.7 -36.1 51.6C-48.6 41.5 -36.2 24.4 -39.9 13"
                        + "C-43.7 1.6 -71.5 -2.5 -67.5 -16.5C-63.5 -30.4 -36.3 -26 -26.9 -33.5"
                        + "C-17.6 -41 -19.1 -67.8 -6.2 -71.7Z"
                }
            }
        }
        Cheek { x: 63; y: 97 }
        Cheek { x: 119; y: 97 }
        Eye { x: 73.4; y: 79 }
        Eye { x: 108.6; y: 79 }
        Shape {
            x: 91
            y: 102.5
            ShapePath {
                strokeColor: plim.ink
                strokeWidth: 3.6
                capStyle: ShapePath.RoundCap
                fillColor: "transparent"
                PathSvg { path: "M-9 -3C-6 5 6 5 9 -3" }
            }
        }
    }
}
