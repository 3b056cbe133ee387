#include <algorithm>
#include <cmath>
#include <numbers>

#include "desktop/companion/plim_brush.h"
#include "desktop/companion/plim_parts.h"

namespace tessary {
namespace {

constexpr double kWide = 11.4;  // half the eye, units
constexpr double kHigh = 15;

/// What of an eye is open, in half eyes: -1 is its top, 1 its bottom. Open, closed and laughing are three of these, and
/// every way between two is a lid in motion.
struct Opening {
    double upper = -1;  ///< middle of the upper lid's edge
    double lower = 1;  ///< middle of the lower lid's edge
    double ends = -0.18;  ///< where the edges end at the sides
    double width = 1;  ///< of the edges, of half an eye
    double laugh = 0;  ///< 1: the cheek closes it from below

    [[nodiscard]] double height() const { return (lower - upper) / 2; }
};

constexpr Opening kClosed{0.46, 0.46, 0.02, 0.9};
constexpr Opening kLaughing{-0.42, -0.42, 0.34, 0.88, 1};

Opening between(const Opening& a, const Opening& b, double u) {
    return {lerp(a.upper, b.upper, u), lerp(a.lower, b.lower, u), lerp(a.ends, b.ends, u), lerp(a.width, b.width, u),
            lerp(a.laugh, b.laugh, u)};
}

Opening openingOf(const PlimPose& pose, int side) {
    if (pose.eye == PlimEye::happy) return kLaughing;
    if (pose.eye == PlimEye::closed) return kClosed;
    // On its way down the lid is arched like the ball beneath it, which looks drowsy; a straight one would look smug.
    // The lower lid only helps at the end.
    const double lid = clamp01(pose.lid);
    Opening opening = between({}, kClosed, lid);
    opening.ends += 0.24 * std::sin(std::numbers::pi * lid);
    opening.lower = lerp(1, kClosed.lower, smoothstep(0.5, 1, lid));
    return side < 0 ? opening : between(opening, kLaughing, clamp01(pose.wink));
}

/// Edge of a lid, from the left to the right.
struct Edge {
    QPointF left, right;
    double middle = 0;

    [[nodiscard]] QPainterPath path(double lifted = 0) const {
        QPainterPath path(left);
        addTo(path, lifted);
        return path;
    }
    /// Goes from `left` to `right`; its middle is `lifted` units higher.
    void addTo(QPainterPath& path, double lifted) const {
        const double reach = 0.94 * (right.x() - left.x()) / 2;
        path.cubicTo({-reach, control(left.y(), lifted)}, {reach, control(right.y(), lifted)}, right);
    }
    void addBack(QPainterPath& path, double lifted) const {
        const double reach = 0.94 * (right.x() - left.x()) / 2;
        path.cubicTo({reach, control(right.y(), lifted)}, {-reach, control(left.y(), lifted)}, left);
    }

private:
    /// A cubic's middle is three quarters of its controls and a quarter of its ends.
    [[nodiscard]] double control(double end, double lifted) const {
        const double middleOfEnds = (left.y() + right.y()) / 2;
        return (middle - lifted - 0.25 * middleOfEnds) / 0.75 + 0.4 * (end - middleOfEnds);
    }
};

/// `slope`: how much lower the outer end is, units.
Edge edgeOf(const Opening& opening, double middle, double slope, int side) {
    const double y = opening.ends * kHigh;
    const auto end = [&](int way) {
        const double height = y + slope * way * side;
        const double across = std::sqrt(std::max(0.0, 1 - std::pow(height / kHigh, 2)));
        return QPointF(way * kWide * std::min(across, opening.width), height);
    };
    return {end(-1), end(1), middle * kHigh};
}

QPainterPath beyond(const Edge& edge, double y) {
    QPainterPath path = edge.path();
    path.lineTo(kWide + 4, edge.right.y());
    path.lineTo(kWide + 4, y);
    path.lineTo(-kWide - 4, y);
    path.lineTo(-kWide - 4, edge.left.y());
    path.closeSubpath();
    return path;
}

struct Eye {
    const PlimPose& pose;
    const PlimLook& look;
    int side;
    Opening opening;
    Edge upper, lower;

    [[nodiscard]] bool full() const { return look.detail == PlimDetail::full; }
};

void drawIris(QPainter& painter, const Eye& eye) {
    const QPointF gaze(4.3 * eye.pose.lx + 0.8, 5 * eye.pose.ly + 0.6);
    const double wide = 9.3 * eye.pose.pr;
    const double high = 12 * eye.pose.pr;
    fill(painter, ellipse(gaze, wide, high),
         linear(gaze - QPointF(0, high), gaze + QPointF(0, high),
                {{0, tint(0xFF2A1538)}, {0.45, tint(0xFF43246A)}, {1, tint(0xFF9A5CD6)}}));
    if (eye.full()) {
        const auto bloom = radial(gaze + QPointF(0, 0.72 * high), 0.75 * wide,
                                  {{0, tint(0xFFF09BE0, 0.85)}, {1, tint(0xFFF09BE0, 0)}});
        fill(painter, ellipse(gaze + QPointF(0, 0.5 * high), 0.8 * wide, 0.5 * high), bloom);
    }
    fill(painter, ellipse(gaze, 0.56 * wide, 0.56 * high), tint(0xFF1E0E2B));
    // A lid that comes down pushes the light before it: an eye without it looks dead.
    QPointF shine = 0.8 * gaze + QPointF(3, -4.6);
    const double size = eye.full() ? 1 : 1.15;
    shine.setY(std::max(shine.y(), eye.upper.middle + 6.4));
    fill(painter, ellipse(shine, 3.5 * size, 4.1 * size), Qt::white);
    if (eye.full()) fill(painter, ellipse(0.9 * gaze + QPointF(-3.2, 4.4), 1.7, 1.9), Qt::white);
}

/// The ball and the lids' skin over it.
void drawBall(QPainter& target, const Eye& eye) {
    Layer layer(target, QRectF(-kWide - 1, -kHigh - 1, 2 * kWide + 2, 2 * kHigh + 2));
    QPainter& painter = layer.painter();
    fill(painter, ellipse({0, 0}, kWide, kHigh),
         linear({0, -kHigh}, {0, 12}, {{0, tint(0xFFEDE3F5)}, {1, tint(0xFFFFFDF8)}}));
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    drawIris(painter, eye);
    if (eye.full()) painter.strokePath(eye.upper.path(), QPen(tint(0xFF5B3A86, 0.12), 8));
    const double dim = dimness(eye.pose);
    const QColor skin = mixed(0xFFFFDD69, 0xFFFBD093, dim);
    fill(painter, beyond(eye.upper, -kHigh - 4),
         linear({0, -kHigh}, {0, 8},
                {{0, mixed(0xFFFFE98F, 0xFFFFE0AE, dim)}, {1, mixed(0xFFFFD65E, 0xFFF8C890, dim)}}));
    if (eye.opening.lower < 0.999) fill(painter, beyond(eye.lower, kHigh + 4), skin);
    layer.put();
}

/// The line around the ball: ink where it is open, a soft fold of skin where a lid covers it.
void drawContour(QPainter& painter, const Eye& eye) {
    const double width = eye.full() ? 1.7 : 3;
    const double covered = smoothstep(0.06, 0.22, eye.opening.height() < 1 ? 1 - eye.opening.height() : 0);
    const QRectF box(-kWide, -kHigh, 2 * kWide, 2 * kHigh);
    const auto angle = [](QPointF at) { return std::atan2(-at.y() / kHigh, at.x() / kWide) * 180 / std::numbers::pi; };
    const double right = angle(eye.upper.right);
    const double left = angle(eye.upper.left);
    if (covered > 0 && eye.full()) {
        QPainterPath fold;
        fold.arcMoveTo(box, right);
        fold.arcTo(box, right, std::fmod(left - right + 360, 360));
        const auto ink = linear(eye.upper.left, eye.upper.right,
                                {{0, tint(0xFFC9772B, 0)},
                                 {0.3, tint(0xFFC9772B, 0.5 * covered)},
                                 {0.7, tint(0xFFC9772B, 0.5 * covered)},
                                 {1, tint(0xFFC9772B, 0)}});
        painter.strokePath(fold, roundPen(ink, 1.5));
    }
    QPainterPath open;
    if (eye.opening.lower > 0.999) {
        open.arcMoveTo(box, left);
        open.arcTo(box, left, std::fmod(right - left + 720, 360));
    } else {
        open = eye.lower.path();
    }
    painter.strokePath(open, roundPen(tint(kInk), width));
}

/// Two, which come out as the eye shuts.
void drawOuterLashes(QPainter& painter, const Eye& eye, double out) {
    if (out <= 0) return;
    const QPointF end = eye.side < 0 ? eye.upper.left : eye.upper.right;
    const auto lash = [&](QPointF from, QPointF by) {
        const QPointF start = end + QPointF(eye.side * from.x(), from.y());
        const QPointF tip = start + out * QPointF(eye.side * by.x(), by.y());
        painter.strokePath(curve(start, (start + tip) / 2 + out * QPointF(0, 0.9), tip), roundPen(tint(kInk), 2.1));
    };
    lash({-0.4, 0.2}, {4.4, 0.7});
    lash({-3.4, 3.6}, {3.1, 3.4});
}

/// The upper lid's edge: a crescent of lashes over an open eye that becomes the line of a closed one.
void drawLash(QPainter& painter, const Eye& eye) {
    const double shut = clamp01(1 - eye.opening.height());
    const double heavy = eye.full() ? 1 : 1.25;
    const double thick = lerp(3.6, 1.2, smoothstep(0.6, 1, shut)) * heavy;
    QPainterPath crescent = eye.upper.path(0.6 * thick);
    eye.upper.addBack(crescent, -0.4 * thick);
    crescent.closeSubpath();
    const double line = lerp(1.2, lerp(3.2, 3.8, eye.opening.laugh), smoothstep(0, 1, shut)) * heavy;
    painter.setPen(roundPen(tint(kInk), line));
    painter.setBrush(tint(kInk));
    painter.drawPath(crescent);
    if (eye.full()) drawOuterLashes(painter, eye, smoothstep(0.4, 1, shut) * (1 - eye.opening.laugh));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::NoBrush);
}

/// Too small for a ball with an iris: one dark shape with a light in it.
void drawBead(QPainter& painter, const Eye& eye) {
    const QPointF at(5 * eye.pose.lx, 4 * eye.pose.ly);
    Layer layer(painter, QRectF(-kWide - 6, -kHigh - 6, 2 * kWide + 12, 2 * kHigh + 12));
    QPainter& bead = layer.painter();
    fill(bead, ellipse(at, 0.84 * kWide, 0.92 * kHigh), tint(0xFF2A1538));
    bead.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    Edge lid = eye.upper;
    lid.left.rx() -= 6;
    lid.right.rx() += 6;
    if (eye.opening.upper > -0.95) fill(bead, beyond(lid, -kHigh - 8), Qt::black);
    layer.put();
    const QPointF shine(at.x() + 3, std::max(at.y() - 5, eye.upper.middle + 4));
    fill(painter, ellipse(shine, 3.8, 4.4), Qt::white);
}

}  // namespace

void drawEye(QPainter& painter, const PlimPose& pose, const PlimLook& look, int side) {
    Eye eye{pose, look, side, openingOf(pose, side), {}, {}};
    const double slope = pose.eye == PlimEye::open ? 5.6 * pose.tilt : 0;
    eye.upper = edgeOf(eye.opening, eye.opening.upper, slope, side);
    eye.lower = edgeOf(eye.opening, eye.opening.lower, 0, side);
    painter.save();
    painter.translate(17.6 * side, -6);
    if (!eye.full()) painter.scale(1.16, 1.16);
    const bool open = eye.opening.height() > 0.1;
    if (look.detail == PlimDetail::speck && open) {
        drawBead(painter, eye);
    } else if (open) {
        drawBall(painter, eye);
        drawContour(painter, eye);
    }
    if (look.detail != PlimDetail::speck || eye.opening.height() < 0.9) drawLash(painter, eye);
    painter.restore();
}

}  // namespace tessary
