#pragma once

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include "desktop/companion/plim_painter.h"
#include "desktop/companion/plim_pose.h"

namespace tessary {

// The parts of the companion. Each draws in canvas units with the painter as it finds it and leaves it so, but for
// those that say that they draw in the body's own space, whose origin is the heart of the star at rest.

/// Where the star's heart rests on the canvas.
inline constexpr QPointF kHeart{128, 116};

/// How far the chin arm is up: 0 hangs on the star, 1 at the chin. Only a gaze this high lifts it.
[[nodiscard]] double chinArm(const PlimPose& pose);
/// 0 shining, 0.6 where the light has gone out of it.
[[nodiscard]] double dimness(const PlimPose& pose);

/// The star's outline, in the body's space.
[[nodiscard]] QPainterPath bodyOutline(const PlimPose& pose);
/// Fill, shade, rim and line. In the body's space; on a canvas that is still empty.
void drawBody(QPainter& painter, const PlimPose& pose, const PlimLook& look);
/// In the body's space.
void drawChinArm(QPainter& painter, const PlimPose& pose, const PlimLook& look);

/// Paints behind what the canvas has. `room` is what the canvas shows.
void drawTrail(QPainter& painter, const PlimPose& pose, const PlimLook& look);
void drawGlow(QPainter& painter, const PlimPose& pose, const PlimLook& look, const QRectF& room);
/// The sparks at the trail's end.
void drawDust(QPainter& painter, const PlimPose& pose, const PlimLook& look);

/// Cheeks, eyes, brows and mouth. In the body's space.
void drawFace(QPainter& painter, const PlimPose& pose, const PlimLook& look);
void drawEye(QPainter& painter, const PlimPose& pose, const PlimLook& look, int side);
void drawMouth(QPainter& painter, const PlimPose& pose, const PlimLook& look);

/// Behind what the canvas has.
void drawBurst(QPainter& painter, const FzFx& burst, const PlimLook& look, const QRectF& room);
/// In the body's space moved so that its heart is at `kHeart`.
void drawNotebook(QPainter& painter, const FzFx& notebook, const PlimPose& pose, const PlimLook& look);
/// Sparks, marks of motion, thought bubbles, the drop and Zs.
void drawEffect(QPainter& painter, const FzFx& effect, const PlimLook& look);

struct Spark {
    QPointF at;
    double reach = 0;  ///< of its points, units
    double turn = 0;   ///< degrees
    QRgb color = 0xFFFFFFFF;
    double alpha = 1;
};
void drawSpark(QPainter& painter, const Spark& spark, const PlimLook& look);

/// The same colour where it would be lost on light paper.
[[nodiscard]] QRgb darkerOnLight(QRgb color);

}  // namespace tessary
