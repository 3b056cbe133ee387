#include <cmath>
#include <numbers>

#include "desktop/companion/plim_brush.h"
#include "desktop/companion/plim_parts.h"

namespace tessary {
namespace {

/// The right half of an open book: from the spine's top around the page to the spine's bottom. `side` -1 mirrors it.
QPainterPath pageOf(int side, double grown = 0) {
    const auto at = [side](double x, double y) { return QPointF(side * x, y); };
    QPainterPath path(at(0, -16 - 0.4 * grown));
    path.cubicTo(at(10, -24 - grown), at(26, -24 - grown), at(38 + grown, -20 - grown));
    path.lineTo(at(46 + grown, 20 + grown));
    path.cubicTo(at(30, 15 + grown), at(12, 15 + grown), at(0, 24 + grown));
    path.closeSubpath();
    return path;
}

/// A line of writing that bends as the page does.
QPainterPath writing(int side, int row) {
    const double y = -11 + 8.2 * row;
    const double end = (row == 3 ? 24 : 36.5) + 1.5 * row;
    const auto at = [side](double x, double height) { return QPointF(side * x, height); };
    return curve(at(6, y + 1.5), at(14, y - 5), at(26, y - 5), at(end, y - 1.5));
}

void drawPages(QPainter& painter, const PlimLook& look) {
    const auto cover = linear({0, -24}, {0, 30}, {{0, tint(0xFF7F78F0)}, {1, tint(0xFF5148B8)}});
    const bool full = look.detail == PlimDetail::full;
    for (const int side : {-1, 1}) fill(painter, pageOf(side, 4), cover);
    for (const int side : {-1, 1}) {
        fill(painter, pageOf(side).translated(0, 3), tint(0xFFD9D3EA));
        fill(painter, pageOf(side),
             linear({0, 0}, {side * 46.0, 0}, {{0, tint(0xFFE4DEF0)}, {0.2, tint(0xFFFFFFFF)}, {1, tint(0xFFFBF8F2)}}));
        painter.strokePath(pageOf(side), roundPen(tint(0xFF8C84B8), full ? 1.2 : 1.6));
        for (int row = 0; row < (full ? 4 : 3); ++row) {
            const QRgb ink = row == 0 ? 0xFFF2A03A : 0xFFA9B0DC;
            painter.strokePath(writing(side, row), roundPen(tint(ink), full ? 2.2 : 3));
        }
    }
}

/// The page that turns from right to left: flat at both ends, where it is no longer told from the page beneath.
void drawTurningPage(QPainter& painter, double flip) {
    if (flip <= 0 || flip >= 1) return;
    const double across = std::cos(std::numbers::pi * flip);
    const double raised = std::sin(std::numbers::pi * flip);
    const QPointF top(38 * across, -20 - 24 * raised);
    const QPointF bottom(46 * across, 20 - 22 * raised);
    // The paper lags behind its edge, so it bulges against the turn.
    const QPointF bulge(10 * raised, 0);
    QPainterPath page(QPointF(0, -16));
    page.cubicTo(QPointF(10 * across, -24 - 8 * raised) + bulge, QPointF(26 * across, -24 - 18 * raised) + bulge, top);
    page.lineTo(bottom);
    page.cubicTo(QPointF(30 * across, 15 - 16 * raised) + bulge, QPointF(12 * across, 15 - 4 * raised) + bulge,
                 {0, 24});
    page.closeSubpath();
    const double shown = smoothstep(0, 0.08, flip) * (1 - smoothstep(0.92, 1, flip));
    fill(painter, page,
         linear({0, 0}, {top.x() + 0.01, top.y()}, {{0, tint(0xFFE2DBF0, shown)}, {1, tint(0xFFFFFFFF, shown)}}));
    painter.strokePath(page, roundPen(tint(0xFF8C84B8, shown), 1.2));
}

void drawPaws(QPainter& painter, const PlimPose& pose, const PlimLook& look) {
    const double dim = dimness(pose);
    for (const int side : {-1, 1}) {
        const QPointF at(45 * side, 8);
        auto light = radial(at + QPointF(1.5, -2.5), 12,
                            {{0, mixed(0xFFFFE88C, 0xFFFFE0B0, dim)}, {1, mixed(0xFFFFB944, 0xFFEFAE8E, dim)}});
        fill(painter, ellipse(at, 8.5, 9.5), light);
        painter.strokePath(ellipse(at, 8.5, 9.5), roundPen(tint(look.dark ? 0xFFE8903A : 0xFFD27C2C),
                                                           look.detail == PlimDetail::full ? 2 : 3.4));
    }
}

}  // namespace

void drawNotebook(QPainter& painter, const FzFx& notebook, const PlimPose& pose, const PlimLook& look) {
    const double shown = clamp01(valueOf(notebook, "a", 1));
    if (shown <= 0) return;
    painter.save();
    painter.translate(valueOf(notebook, "x"), valueOf(notebook, "y") + valueOf(notebook, "dy"));
    painter.rotate(valueOf(notebook, "rot"));
    const double size = 1.12 * valueOf(notebook, "sc", 1);
    painter.scale(size, size);
    Layer layer(painter, QRectF(-58, -56, 116, 92));
    drawPages(layer.painter(), look);
    drawTurningPage(layer.painter(), valueOf(notebook, "flip"));
    drawPaws(layer.painter(), pose, look);
    layer.put(shown);
    painter.restore();
}

}  // namespace tessary
