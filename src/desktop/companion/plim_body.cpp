#include <algorithm>
#include <array>

#include "desktop/companion/plim_brush.h"
#include "desktop/companion/plim_parts.h"

namespace tessary {
namespace {

/// A point of the outline: the curve goes through it along `tangent`, the straighter the longer `reach` is.
struct Node {
    QPointF at;
    double tangent;
    double reach;
};

Node polar(double radius, double angle, double tangent, double reach) { return {radius * dir(angle), tangent, reach}; }

Node mirrored(const Node& node) { return {{-node.at.x(), node.at.y()}, -node.tangent, node.reach}; }

/// How an arm departs from rest, degrees: only one of the two is not 0.
struct Lift {
    double up, down;
    explicit Lift(double turn) : up(std::max(0.0, -turn)), down(std::max(0.0, turn)) {}
    [[nodiscard]] double turn() const { return down - up; }
};

/// A raised arm grows a little and bends upwards; one that hangs bends down at its end.
Node rightArm(const Lift& lift, double shortened) {
    const double angle = -16 + lift.turn() - 0.1 * lift.up + 0.15 * lift.down;
    const QPointF point = QPointF(31, -6) + (38 + 0.5 * lift.up - shortened) * dir(angle);
    return {point, angle + 90 - 0.5 * lift.up + 0.55 * lift.down, 14.5};
}

/// Between head and arm: follows the arm.
Node upperValley(const Lift& lift, double atRest, double side) {
    const double angle = atRest + side * (0.42 * lift.down - 0.1 * lift.up);
    return polar(43 + 0.1 * (lift.down - lift.up), angle, angle + 90, 12 - 0.1 * lift.up);
}

/// Between arm and leg: opens under a raised arm.
Node lowerValley(const Lift& lift, double atRest, double side) {
    const double angle = atRest + side * (0.36 * lift.down - 0.4 * lift.up);
    return polar(42, angle, angle + 90, 12 + 0.12 * lift.up);
}

/// The head's point lags behind the trail's swing, and droops as the trail shrinks.
double leanOf(const PlimPose& pose, const Lift& right, const Lift& left) {
    return std::clamp(8 + 0.9 * pose.tailA + 20 * (1 - pose.tail) + 0.5 * (right.up - left.up), -10.0, 26.0);
}

QBrush skin(double dim) {
    QRadialGradient light({2, 2}, 78, {12, -26}, 4);
    light.setColorAt(0, mixed(0xFFFFF8D6, 0xFFFFEFD2, dim));
    light.setColorAt(0.30, mixed(0xFFFFE680, 0xFFFFD896, dim));
    light.setColorAt(0.62, mixed(0xFFFFD046, 0xFFF7BD86, dim));
    light.setColorAt(0.88, mixed(0xFFFFB035, 0xFFEDA291, dim));
    light.setColorAt(1, mixed(0xFFFA8F42, 0xFFCC8FB2, dim));
    return light;
}

/// Light along the edges towards the sky, and a warm reflection along the lower left.
void drawRim(QPainter& painter, const QPainterPath& outline, double strength) {
    const auto white = [&](double alpha) { return tint(0xFFFFFFFF, alpha * strength); };
    const auto warm = [&](double alpha) { return tint(0xFFFF8FC4, alpha * strength); };
    const QPointF sky(44, -58);
    painter.strokePath(
        outline,
        roundPen(linear(sky, {-40, 64}, {{0, white(0.6)}, {0.6, white(0)}, {0.62, warm(0)}, {1, warm(0.75)}}), 10.4));
    painter.strokePath(outline, roundPen(linear(sky, {-14, 18}, {{0, white(0.8)}, {1, white(0)}}), 4.6));
}

}  // namespace

double chinArm(const PlimPose& pose) { return smoothstep(0, 1, (-pose.ly - 0.3) / 0.4); }

double dimness(const PlimPose& pose) { return 0.6 * clamp01((1.05 - pose.glow) / 0.5); }

QPainterPath bodyOutline(const PlimPose& pose) {
    const double chin = chinArm(pose);
    const Lift right(lerp(pose.ra + 16, 22, chin));
    const Lift left(196 - pose.la);
    const double lean = leanOf(pose, right, left);
    const std::array nodes{
        polar(72, -90 - 0.62 * lean, -2.12 * lean, 13.5),
        upperValley(right, -53 - 0.12 * lean, 1),
        rightArm(right, 9 * chin),
        lowerValley(right, 18, 1),
        polar(63, 55, 141, 16),
        polar(44, 90, 180, 13),
        polar(63, 125, 219, 16),
        lowerValley(left, 162, -1),
        mirrored(rightArm(left, 0)),
        upperValley(left, 233 - 0.22 * lean, -1),
    };
    QPainterPath path(nodes[0].at);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const Node& from = nodes[i];
        const Node& to = nodes[(i + 1) % nodes.size()];
        path.cubicTo(from.at + from.reach * dir(from.tangent), to.at - to.reach * dir(to.tangent), to.at);
    }
    path.closeSubpath();
    return path;
}

void drawBody(QPainter& painter, const PlimPose& pose, const PlimLook& look) {
    const QPainterPath outline = bodyOutline(pose);
    const double dim = dimness(pose);
    fill(painter, outline, skin(dim));
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    const QColor shade = mixed(0xFFF2606B, 0xFF8A5BB0, dim, 0.42);
    QColor none = shade;
    none.setAlpha(0);
    fill(painter, outline, linear({26, -40}, {-26, 66}, {{0.58, none}, {1, shade}}));
    if (look.detail == PlimDetail::full) drawRim(painter, outline, std::min(1.0, pose.glow));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const auto line = look.dark ? linear({40, -60}, {-40, 60}, {{0, tint(0xFFFFE9A6)}, {1, tint(0xFFD9622F)}})
                                : linear({40, -60}, {-40, 60}, {{0, tint(0xFFE39A22)}, {1, tint(0xFFCC5A33)}});
    painter.strokePath(outline, roundPen(line, look.detail == PlimDetail::full ? 2.2 : 5));
}

void drawChinArm(QPainter& painter, const PlimPose& pose, const PlimLook& look) {
    const double up = chinArm(pose);
    if (up <= 0) return;
    const double tap = 0.9 * (pose.ra + 28);
    const QPointF shoulder(43, -3);
    const QPointF hand = lerp(shoulder, {13 + 0.3 * tap, 35 + tap}, up);
    const QPainterPath arm = curve(shoulder, (shoulder + hand) / 2 + QPointF(8, 9) * up, hand);
    // It grows out of the star: both strokes dissolve at the shoulder.
    const auto fading = [](QRgb color, double alpha, double from, double to) {
        return linear({46, 6}, {36, -10}, {{from, tint(color, alpha)}, {to, tint(color, 0)}});
    };
    const double wider = look.detail == PlimDetail::full ? 4 : 8;
    const QRgb line = look.dark ? 0xFFDE7A36 : 0xFFD2702E;
    painter.strokePath(arm, roundPen(fading(line, std::min(1.0, 1.6 * up), 0, 0.3), 17 + wider));
    painter.strokePath(arm, roundPen(fading(0xFFFFD458, std::min(1.0, 4 * up), 0.06, 0.5), 17));
    const auto shine = radial(hand + QPointF(1, -2), 11, {{0, tint(0xFFFFEE9E, up)}, {1, tint(0xFFFFE680, 0)}});
    fill(painter, ellipse(hand, 8, 8), shine);
}

}  // namespace tessary
