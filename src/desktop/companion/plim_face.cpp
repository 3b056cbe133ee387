#include <array>

#include "desktop/companion/plim_brush.h"
#include "desktop/companion/plim_parts.h"

namespace tessary {
namespace {

void drawCheeks(QPainter& painter, const PlimLook& look) {
    constexpr double kWide = 9.2;
    constexpr double kHigh = 6.3;
    for (const int side : {-1, 1}) {
        painter.save();
        painter.translate(28 * side, 11.5);
        painter.scale(1, kHigh / kWide);
        const QBrush blush = look.detail == PlimDetail::full
                                 ? QBrush(radial({0, 0}, kWide, {{0, tint(0xFFFF6F8F, 0.8)}, {1, tint(0xFFFF6F8F, 0)}}))
                                 : QBrush(tint(0xFFFF7F8E, 0.75));
        fill(painter, ellipse({0, 0}, kWide, kWide), blush);
        painter.restore();
    }
}

/// Three points of a curve, x outwards from the nose, y from the brow's place.
struct BrowShape {
    std::array<QPointF, 3> left, right;
};

BrowShape browShape(const PlimPose& pose) {
    switch (pose.brow) {
        case PlimBrow::cur: return {{{{9, -1}, {16, -6}, {25, -1}}}, {{{9, -6}, {17, -12.5}, {26, -5}}}};
        case PlimBrow::think: return {{{{7, 5}, {15, 2}, {25, -2}}}, {{{7, -3}, {15, -10.5}, {24, -4}}}};
        default: break;
    }
    const double sorrow = 1.6 * pose.tilt;
    const std::array<QPointF, 3> sad{{{8, -6 - sorrow}, {15, -4.5}, {25, 3 + sorrow}}};
    return {sad, sad};
}

void drawBrows(QPainter& painter, const PlimPose& pose, const PlimLook& look) {
    if (pose.brow == PlimBrow::none) return;
    const BrowShape shape = browShape(pose);
    const QPointF place(0, -26 + 1.4 * pose.browY);
    const QPen pen = roundPen(tint(0xFF6B3320), look.detail == PlimDetail::full ? 4.4 : 6.5);
    const auto stroke = [&](const std::array<QPointF, 3>& points, int side) {
        const auto at = [&](QPointF point) { return place + QPointF(side * point.x(), point.y()); };
        painter.strokePath(curve(at(points[0]), at(points[1]), at(points[2])), pen);
    };
    stroke(shape.left, -1);
    stroke(shape.right, 1);
}

}  // namespace

void drawFace(QPainter& painter, const PlimPose& pose, const PlimLook& look) {
    painter.save();
    // The whole face turns with the gaze a little, which makes the star look round.
    painter.translate(3 + 2.6 * pose.lx, 1 + 2.2 * pose.ly + 2.5 * pose.tilt);
    painter.rotate(5 * pose.tilt);
    drawCheeks(painter, look);
    drawEye(painter, pose, look, -1);
    drawEye(painter, pose, look, 1);
    drawBrows(painter, pose, look);
    drawMouth(painter, pose, look);
    painter.restore();
}

}  // namespace tessary
