#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "desktop/companion/plim_brush.h"
#include "desktop/companion/plim_parts.h"

namespace tessary {
namespace {

/// One ribbon of the trail.
struct Blade {
    double turn;    ///< from the trail's direction, degrees
    double length;  ///< of the trail's
    double width;   ///< units, half of it where it leaves the star
    QRgb from, to;
};

struct Sweep {
    QPointF heart;   ///< of the star
    QPointF lagging; ///< where the heart would be if it jumped less: the tips follow late
    double angle;    ///< degrees; to the lower left, and swinging against the star's turns
    double length;   ///< units
    double alpha;    ///< a dim star leaves a faint trail
};

Sweep sweepOf(const PlimPose& pose, const PlimLook& look) {
    const QPointF moved(pose.dx, pose.dy);
    const bool full = look.detail == PlimDetail::full;
    return {
        .heart = kHeart + moved,
        .lagging = kHeart + 0.35 * moved,
        .angle = 150 + 1.5 * pose.tailA + 10 * std::sin((pose.rot + 10) * std::numbers::pi / 180),
        .length = full ? std::min(54 + 56 * pose.tail, 128.0) : std::min(50 + 42 * pose.tail, 96.0),
        .alpha = std::clamp((pose.glow - 0.3) / 0.8, 0.45, 1.0),
    };
}

QPointF normal(QPointF along) {
    const double length = std::hypot(along.x(), along.y());
    return QPointF(-along.y(), along.x()) / std::max(length, 1e-6);
}

/// Bent like grass in the wind, with a round tip.
struct Ribbon {
    QPointF root, middle, tip;
    QPointF across;     ///< at the root, one unit
    QPointF acrossTip;  ///< at the tip
    double width;

    Ribbon(const Blade& blade, const Sweep& sweep) : width(blade.width) {
        const QPointF along = dir(sweep.angle + blade.turn);
        across = normal(along);
        root = sweep.heart + 18 * along + 0.55 * blade.turn * across;
        tip = sweep.lagging + blade.length * sweep.length * along;
        middle = (root + tip) / 2 - 0.17 * blade.length * sweep.length * across;
        acrossTip = normal(tip - middle);
    }

    [[nodiscard]] QPainterPath path() const {
        const QPointF left = tip + 0.17 * width * acrossTip;
        const QPointF right = tip - 0.17 * width * acrossTip;
        const QPointF beyond = 0.3 * width * QPointF(acrossTip.y(), -acrossTip.x());
        QPainterPath path(root + width * across);
        path.quadTo(middle + 0.72 * width * acrossTip, left);
        path.cubicTo(left + beyond, right + beyond, right);
        path.quadTo(middle - 0.72 * width * acrossTip, root - width * across);
        path.closeSubpath();
        return path;
    }
};

void drawBlade(QPainter& painter, const Blade& blade, const Sweep& sweep) {
    const Ribbon ribbon(blade, sweep);
    const double alpha = sweep.alpha;
    fill(painter, ribbon.path(),
         linear(ribbon.root, ribbon.tip,
                {{0, tint(blade.from, alpha)},
                 {0.5, mixed(blade.from, blade.to, 0.5, 0.92 * alpha)},
                 {0.86, tint(blade.to, 0.6 * alpha)},
                 {1, tint(blade.to, 0.28 * alpha)}}));
}

/// Two lines of light that run within the ribbon and end before its tip.
void drawStreaks(QPainter& painter, const Blade& blade, const Sweep& sweep) {
    const Ribbon ribbon(blade, sweep);
    for (const double side : {-0.42, 0.3}) {
        const double offset = side * ribbon.width;
        const QPointF from = ribbon.root + offset * ribbon.across;
        const QPointF middle = ribbon.middle + 0.72 * offset * ribbon.acrossTip;
        const QPointF to = lerp(ribbon.middle, ribbon.tip, side < 0 ? 0.72 : 0.45) + 0.3 * offset * ribbon.acrossTip;
        const auto light = linear(from, to, {{0, tint(0xFFFFF6CF, 0.85 * sweep.alpha)}, {1, tint(0xFFFFF6CF, 0)}});
        painter.strokePath(curve(from, lerp(from, middle, 0.9), to), roundPen(light, 3.4));
    }
}

}  // namespace

void drawTrail(QPainter& painter, const PlimPose& pose, const PlimLook& look) {
    const Sweep sweep = sweepOf(pose, look);
    if (look.detail != PlimDetail::full) {
        drawBlade(painter, {4, 1, 24, 0xFFFFB52A, look.dark ? 0xFFFFA765 : 0xFFFFC95A}, sweep);
        drawBlade(painter, {-12, 0.92, 19, 0xFFFF6FB8, 0xFFFF9AD0}, sweep);
        return;
    }
    const Blade gold{0, 1, 21, 0xFFFFC02E, look.dark ? 0xFFFFB07A : 0xFFFFD873};
    drawStreaks(painter, gold, sweep);
    drawBlade(painter, gold, sweep);
    drawBlade(painter, {-15, 0.90, 15, 0xFFFF7DBE, 0xFFFFA9D8}, sweep);
    drawBlade(painter, {15, 0.86, 15, 0xFF8E97F5, 0xFFB4BBFF}, sweep);
}

void drawGlow(QPainter& painter, const PlimPose& pose, const PlimLook& look, const QRectF& room) {
    const QPointF heart = kHeart + QPointF(pose.dx, pose.dy);
    const double edge = std::min(
        {heart.x() - room.left(), room.right() - heart.x(), heart.y() - room.top(), room.bottom() - heart.y()});
    const double glow = std::clamp(pose.glow, 0.0, 1.9);
    const double reach = std::min(78 + 18 * glow, edge - 1);
    if (reach <= 20) return;
    // Stops are told from a radius of 20 on, which the star always covers.
    const auto at = [reach](double u) { return lerp(20, reach, u) / reach; };
    const double strong = std::pow(glow, 1.1);
    const auto light = look.dark ? radial(heart, reach,
                                          {{at(0), tint(0xFFFFC46B, 0.62 * strong)},
                                           {at(0.48), tint(0xFFFF9E62, 0.36 * strong)},
                                           {at(0.74), tint(0xFFC66FA8, 0.14 * glow)},
                                           {1, tint(0xFFC66FA8, 0)}})
                                 : radial(heart, reach,
                                          {{at(0), tint(0xFFFFCB5C, 0.50 * glow)},
                                           {at(0.52), tint(0xFFFFD27A, 0.34 * glow)},
                                           {at(0.78), tint(0xFFFFD3B8, 0.11 * glow)},
                                           {1, tint(0xFFFFD3B8, 0)}});
    fill(painter, ellipse(heart, reach, reach), light);
}

void drawDust(QPainter& painter, const PlimPose& pose, const PlimLook& look) {
    const double shown = smoothstep(0.55, 0.8, pose.tail);
    if (shown <= 0) return;
    const Sweep sweep = sweepOf(pose, look);
    struct Grain {
        double reach, along, sideways;
        QRgb color;
    };
    constexpr std::array kGrains{Grain{4.2, 1.12, 9, 0xFFFFB3DE}, Grain{3.2, 0.98, -17, 0xFFFFE39A},
                                 Grain{3.2, 0.93, 33, 0xFFC9CFFF}};
    const QPointF along = dir(sweep.angle);
    for (const Grain& grain : kGrains) {
        const QPointF at = sweep.lagging +
                           std::min(sweep.length * grain.along, 122 - 0.3 * std::abs(grain.sideways)) * along +
                           grain.sideways * normal(along);
        drawSpark(painter, {.at = at, .reach = grain.reach * shown, .color = grain.color, .alpha = sweep.alpha * shown},
                  look);
    }
}

}  // namespace tessary
