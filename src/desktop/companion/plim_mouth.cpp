#include "desktop/companion/plim_brush.h"
#include "desktop/companion/plim_parts.h"

namespace tessary {
namespace {

constexpr QRgb kInside = 0xFF6E1F45;
constexpr QRgb kTongue = 0xFFFF7F9C;

/// A mouth that is open: the tongue is a hill at its bottom, and the line around it is drawn last.
void drawOpen(QPainter& target, const QPainterPath& lips, const QPainterPath& tongue, bool teeth) {
    const QRectF box = lips.boundingRect().adjusted(-1, -1, 1, 1);
    Layer layer(target, box);
    QPainter& painter = layer.painter();
    fill(painter, lips, tint(kInside));
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    fill(painter, tongue, tint(kTongue));
    if (teeth) painter.strokePath(curve({-13, -4.2}, {-6, -1.8}, {6, -1.8}, {13, -4.2}), QPen(Qt::white, 5));
    layer.put();
    target.strokePath(lips, roundPen(tint(kInk), 2.6));
}

void drawRound(QPainter& painter, double wide, double high, double y) {
    drawOpen(painter, ellipse({0, y}, wide, high), ellipse({0, y + 0.95 * high}, 0.8 * wide, 0.62 * high), false);
}

void drawGrin(QPainter& painter) {
    QPainterPath lips = curve({-13, -5}, {-6, -2.6}, {6, -2.6}, {13, -5});
    lips.cubicTo(13, 5, 7, 11.5, 0, 11.5);
    lips.cubicTo(-7, 11.5, -13, 5, -13, -5);
    lips.closeSubpath();
    drawOpen(painter, lips, ellipse({0, 11.5}, 8, 5.4), true);
}

/// Unsure of itself; in sorrow its ends hang.
QPainterPath wobble(double tilt) {
    const double hang = 4 * tilt;
    QPainterPath path = curve({-11, 2 + hang}, {-8.5, -4.5}, {-4.5, -4.5}, {-2, -0.5});
    path.cubicTo(0, 2.8, 3.4, 2.8, 5.2, -0.6);
    path.cubicTo(6.6, -3.2, 9.4, -2.6, 11, 1.4 + hang);
    return path;
}

}  // namespace

void drawMouth(QPainter& painter, const PlimPose& pose, const PlimLook& look) {
    const double size = pose.mouthS * (look.detail == PlimDetail::full ? 1 : 1.22);
    const QPen line = roundPen(tint(kInk), 3.6);
    painter.save();
    painter.translate(0, 17.5);
    painter.scale(size, size);
    switch (pose.mouth) {
        case PlimMouth::smile: painter.strokePath(curve({-9, -3}, {-6, 5}, {6, 5}, {9, -3}), line); break;
        case PlimMouth::tiny: painter.strokePath(curve({-4.2, -1}, {-2.4, 2.6}, {2.4, 2.6}, {4.2, -1}), line); break;
        case PlimMouth::wobble: painter.strokePath(wobble(pose.tilt), line); break;
        case PlimMouth::o: drawRound(painter, 5.2, 6, 1); break;
        case PlimMouth::oh: drawRound(painter, 8.6, 10.6, 3); break;
        case PlimMouth::grin: drawGrin(painter); break;
    }
    painter.restore();
}

}  // namespace tessary
