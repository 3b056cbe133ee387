#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "desktop/companion/plim_brush.h"
#include "desktop/companion/plim_parts.h"

namespace tessary {
namespace {

QRgb colorOf(const FzFx& effect) {
    const QColor color(QString::fromStdString(effect.color.value_or("#FFE39A")));
    return color.isValid() ? color.rgb() : 0xFFFFE39A;
}

double opacityOf(const FzFx& effect) { return clamp01(valueOf(effect, "a", 1)); }

QPointF placeOf(const FzFx& effect) { return {valueOf(effect, "x"), valueOf(effect, "y")}; }

/// A line in the effect's colour: on light paper it has a darker one beneath, or is only that where it is small.
void strokeLight(QPainter& painter, const QPainterPath& path, QRgb color, double width, double alpha,
                 const PlimLook& look) {
    if (look.dark) return painter.strokePath(path, roundPen(tint(color, alpha), width));
    const bool full = look.detail == PlimDetail::full;
    painter.strokePath(path, roundPen(tint(darkerOnLight(color), alpha), full ? width + 2.6 : width));
    if (full) painter.strokePath(path, roundPen(tint(color, alpha), width));
}

QPainterPath arc(QPointF centre, double radius, double middle, double halfSpan) {
    const QRectF box(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    QPainterPath path;
    path.arcMoveTo(box, -(middle - halfSpan));
    path.arcTo(box, -(middle - halfSpan), -2 * halfSpan);
    return path;
}

/// Two arcs above the hand when it is up, two beside it when it is down; each pair flies off as it shows.
void drawMotion(QPainter& painter, const FzFx& effect, const PlimLook& look) {
    const bool full = look.detail == PlimDetail::full;
    const double down = clamp01(valueOf(effect, "o"));
    const QPointF centre = placeOf(effect) + QPointF(2, 12);
    for (const auto& [on, towards] : {std::pair{1 - down, -98.0}, std::pair{down, -18.0}}) {
        const double shown = opacityOf(effect) * smoothstep(0.1, 0.7, on);
        if (shown <= 0) continue;
        const double push = 4 * on;
        const QRgb color = colorOf(effect);
        if (full) {
            const QPen pen = roundPen(tint(look.dark ? color : 0xFFE2A630, shown), 4);
            painter.strokePath(arc(centre, 20 + push, towards, 17), pen);
            painter.strokePath(arc(centre, 29.5 + push, towards, 21), pen);
        } else {
            strokeLight(painter, arc(centre, 29 + push, towards, 22), color, 6, shown, look);
        }
    }
}

void drawDots(QPainter& painter, const FzFx& effect, const PlimLook& look) {
    const QRgb color = colorOf(effect);
    const bool full = look.detail == PlimDetail::full;
    const double near = full ? 1 : 0.78;
    const QPointF place = placeOf(effect) + (full ? QPointF() : QPointF(-6, 7));
    struct Bubble {
        QPointF at;
        const char* shown;
    };
    constexpr std::array kBubbles{Bubble{{4, -4}, "a0"}, Bubble{{12, -15}, "a1"}, Bubble{{26, -33}, "a2"}};
    int index = 0;
    for (const Bubble& bubble : kBubbles) {
        const double value = valueOf(effect, bubble.shown);
        const double shown = clamp01(value);
        const double drift = valueOf(effect, "dy") * (1 + 0.35 * index);
        const bool cloud = index++ == 2;
        if (shown <= 0) continue;
        QPainterPath shape;
        if (cloud) {
            shape.setFillRule(Qt::WindingFill);
            shape.addEllipse(QPointF(-10, 2), 9, 9);
            shape.addEllipse(QPointF(9, 2.5), 9.5, 9.5);
            shape.addEllipse(QPointF(-1, -4.5), 10.5, 10.5);
            shape.addEllipse(QPointF(0, 5), 8.5, 8.5);
        } else {
            const double radius = index == 1 ? 4.6 : 6.4;
            shape.addEllipse(QPointF(0, 0), radius, radius);
        }
        painter.save();
        painter.translate(place + near * bubble.at + QPointF(0, drift));
        const double size = (0.55 + 0.45 * value) * (full || cloud ? 1 : 1.25);
        painter.scale(size, size);
        Layer layer(painter, shape.boundingRect().adjusted(-4, -4, 4, 4));
        // The line goes beneath, so that the circles of the cloud melt into one.
        const double line = full ? 3.4 : 4.6;
        if (!look.dark) layer.painter().strokePath(shape, roundPen(tint(darkerOnLight(color)), line));
        fill(layer.painter(), shape, linear({0, -14}, {0, 14}, {{0, tint(0xFFFFFCF0)}, {1, tint(color)}}));
        if (cloud) {
            for (const double x : {-7.5, 0.0, 7.5}) fill(layer.painter(), ellipse({x, 1}, 2, 2), tint(0xFFB0721A));
        }
        layer.put(opacityOf(effect) * shown);
        painter.restore();
    }
}

/// A drop of sweat.
void drawDrop(QPainter& painter, const FzFx& effect, const PlimLook& look) {
    const double size = 1.15 * valueOf(effect, "s", 1);
    if (size <= 0) return;
    painter.save();
    painter.translate(placeOf(effect) + QPointF(0, -2 + valueOf(effect, "dy")));
    painter.rotate(12);
    painter.scale(size, size);
    QPainterPath shape = curve({0, -16}, {3, -8}, {10, -3}, {10, 5});
    shape.cubicTo(10, 11, 5.6, 15, 0, 15);
    shape.cubicTo(-5.6, 15, -10, 11, -10, 5);
    shape.cubicTo(-10, -3, -3, -8, 0, -16);
    Layer layer(painter, shape.boundingRect().adjusted(-3, -3, 3, 3));
    fill(layer.painter(), shape, linear({0, -14}, {0, 15}, {{0, tint(0xFFD6F1FF)}, {1, tint(0xFF5FB4F2)}}));
    layer.painter().strokePath(shape, roundPen(tint(look.dark ? 0xFFBFE6FF : 0xFF2F7FC4), 2));
    layer.painter().strokePath(curve({-5.4, 3.4}, {-5.6, 7.6}, {-2.6, 10}), roundPen(tint(0xFFFFFFFF, 0.9), 2.4));
    fill(layer.painter(), ellipse({-4.2, -0.6}, 1.3, 1.6), tint(0xFFFFFFFF, 0.9));
    layer.put(opacityOf(effect));
    painter.restore();
}

/// Three Zs rise one after the other and sway; each is gone when its turn comes again, so the loop has no seam.
void drawZs(QPainter& painter, const FzFx& effect, const PlimLook& look) {
    const bool full = look.detail == PlimDetail::full;
    const int count = full ? 3 : 2;
    for (int i = 0; i < count; ++i) {
        const double turn = valueOf(effect, "k") + static_cast<double>(i) / count + 0.08;
        const double risen = turn - std::floor(turn);
        const double shown = smoothstep(0, 0.14, risen) * (1 - smoothstep(0.78, 1, risen));
        if (shown <= 0) continue;
        const QPointF at =
            placeOf(effect) + QPointF((full ? 50 : 42) * risen + 4 * std::sin(2 * std::numbers::pi * risen),
                                      4 - (full ? 64 : 46) * risen);
        const double half = lerp(7, 16, risen) / 2 * (full ? 1 : 1.25);
        QPainterPath letter(at + QPointF(-half, -half));
        letter.lineTo(at + QPointF(half, -half));
        letter.lineTo(at + QPointF(-half, half));
        letter.lineTo(at + QPointF(half, half));
        const double width = lerp(2.6, 4.4, risen) * (full ? 1 : 1.3);
        strokeLight(painter, letter, colorOf(effect), width, shown * opacityOf(effect), look);
    }
}

/// How far it is from `centre` to the edge of `room` in the direction of `way`.
double roomTowards(const QRectF& room, QPointF centre, QPointF way) {
    const double x = way.x() > 0 ? (room.right() - centre.x()) / way.x() : (room.left() - centre.x()) / way.x();
    const double y = way.y() > 0 ? (room.bottom() - centre.y()) / way.y() : (room.top() - centre.y()) / way.y();
    return std::min(std::abs(way.x()) < 1e-9 ? y : x, std::abs(way.y()) < 1e-9 ? x : y);
}

}  // namespace

QRgb darkerOnLight(QRgb color) {
    constexpr std::array<std::pair<QRgb, QRgb>, 5> kPairs{{{0xFFFFE39A, 0xFFCB8D1E},
                                                           {0xFFFFD84D, 0xFFCB831A},
                                                           {0xFFFFB3DE, 0xFFD2559A},
                                                           {0xFFC9CFFF, 0xFF6E77D6},
                                                           {0xFFFFFFFF, 0xFF8A93E0}}};
    const auto found = std::ranges::find(kPairs, color, &std::pair<QRgb, QRgb>::first);
    return found != kPairs.end() ? found->second : mixed(0xFF000000, color, 0.62).rgb();
}

void drawSpark(QPainter& painter, const Spark& spark, const PlimLook& look) {
    const double reach = spark.reach;
    if (reach <= 0 || spark.alpha <= 0) return;
    const bool full = look.detail == PlimDetail::full;
    if (look.dark) {
        const double light = (full ? 1.7 : 1.25) * reach;
        const auto halo = radial(spark.at, light,
                                 {{0, tint(spark.color, 0.42 * spark.alpha)},
                                  {0.5, tint(spark.color, 0.16 * spark.alpha)},
                                  {1, tint(spark.color, 0)}});
        fill(painter, ellipse(spark.at, light, light), halo);
    }
    QPainterPath star;
    for (int i = 0; i < 4; ++i) {
        const QPointF point = reach * dir(spark.turn + 90 * i);
        const QPointF next = reach * dir(spark.turn + 90 * (i + 1));
        if (i == 0) star.moveTo(spark.at + point);
        star.cubicTo(spark.at + 0.28 * point + 0.06 * next, spark.at + 0.28 * next + 0.06 * point, spark.at + next);
    }
    star.closeSubpath();
    if (look.dark) return fill(painter, star, tint(mixed(0xFFFFFFFF, spark.color, 0.75).rgb(), spark.alpha));
    const QColor line = tint(darkerOnLight(spark.color), spark.alpha);
    if (!full) return painter.strokePath(star, roundPen(line, 2.4)), fill(painter, star, line);
    // The line grows with the spark: a small one would be nothing but line.
    painter.strokePath(star, roundPen(line, std::min(3.4, 0.34 * reach + 0.8)));
    fill(painter, star, tint(spark.color, spark.alpha));
}

void drawBurst(QPainter& target, const FzFx& burst, const PlimLook& look, const QRectF& room) {
    const double progress = clamp01(valueOf(burst, "k"));
    const double shown = opacityOf(burst);
    if (progress <= 0 || shown <= 0) return;
    constexpr std::array<QRgb, 4> kColors{0xFFFFD84D, 0xFFFFB3DE, 0xFFC9CFFF, 0xFFFFE39A};
    Layer layer(target, room);
    QPainter& painter = layer.painter();
    const QPointF centre = placeOf(burst);
    const bool full = look.detail == PlimDetail::full;
    const double sides = std::min({centre.x() - room.left(), room.right() - centre.x(), centre.y() - room.top()});
    const double radius = lerp(46, std::min(88.0, sides - 4), progress);
    const double ring = (1 - progress) * (1 - progress);
    painter.strokePath(ellipse(centre, radius, radius), QPen(tint(look.dark ? 0xFFFFE39A : 0xFFE5A93A, ring), 3));
    const int rays = full ? 12 : 8;
    for (int ray = 0; ray < rays; ++ray) {
        const QPointF way = dir(-75 + 360.0 / rays * ray);
        const bool streak = ray % 2 == 0;
        const QRgb color = kColors[static_cast<std::size_t>(ray / 2 + ray % 2) % kColors.size()];
        // What flies ends within the canvas, wherever the edge is.
        const double end = std::min(streak ? 99.0 : 87.0, roomTowards(room, centre, way) - 17);
        const double at = lerp(std::min(50.0, end), end, progress);
        if (!streak) {
            const double reach = 9.2 * (1 - 0.5 * progress);
            drawSpark(painter, {.at = centre + at * way, .reach = reach, .turn = 15.0 * ray, .color = color}, look);
            continue;
        }
        // It stretches as it flies and shrinks to a point at the end.
        const double length = 26 * std::pow(std::max(0.0, std::sin(std::numbers::pi * (0.12 + 0.88 * progress))), 0.8);
        if (length < 0.5) continue;
        QPainterPath path(centre + (at - length / 2) * way);
        path.lineTo(centre + (at + length / 2) * way);
        strokeLight(painter, path, color, full ? 3.6 : 6, 1, look);
    }
    layer.put(shown);
}

void drawEffect(QPainter& painter, const FzFx& effect, const PlimLook& look) {
    if (opacityOf(effect) <= 0) return;
    if (effect.type == "spark") {
        const double size = look.detail == PlimDetail::full ? 1.7 : 1.7 * 1.25;
        drawSpark(painter,
                  {.at = placeOf(effect),
                   .reach = size * valueOf(effect, "s"),
                   .turn = valueOf(effect, "r"),
                   .color = colorOf(effect),
                   .alpha = opacityOf(effect)},
                  look);
    } else if (effect.type == "motion") {
        drawMotion(painter, effect, look);
    } else if (effect.type == "dots") {
        drawDots(painter, effect, look);
    } else if (effect.type == "drop") {
        drawDrop(painter, effect, look);
    } else if (effect.type == "zz") {
        drawZs(painter, effect, look);
    }
}

}  // namespace tessary
