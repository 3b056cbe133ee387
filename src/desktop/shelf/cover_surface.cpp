#include "desktop/shelf/cover_surface.h"

#include <QtCore/QRandomGenerator>
#include <QtGui/QPainterPath>
#include <cmath>
#include <numbers>

namespace tessary {
namespace {

void paintCloth(QPainter& painter, const QRectF& board, QRandomGenerator& random) {
    constexpr int kThread = 3;
    for (int y = 0; y < board.height(); y += kThread) {
        painter.fillRect(QRectF(0, y, board.width(), 1), y / kThread % 2 != 0 ? shade(0.10) : light(0.09));
    }
    for (int x = 0; x < board.width(); x += kThread) {
        painter.fillRect(QRectF(x, 0, 1, board.height()), x / kThread % 2 != 0 ? shade(0.09) : light(0.08));
    }
    constexpr int kSlubs = 90;  // thick places in the yarn
    for (int i = 0; i < kSlubs; ++i) {
        const QColor color = random.bounded(2) == 0 ? light(0.10) : shade(0.10);
        const double along = 6 + random.bounded(12.0);
        const double x = random.bounded(board.width());
        const double y = random.bounded(board.height());
        const bool weft = random.bounded(2) == 0;
        painter.fillRect(weft ? QRectF(x, std::floor(y / kThread) * kThread, along, 1)
                              : QRectF(std::floor(x / kThread) * kThread, y, 1, along),
                         color);
    }
}

void paintLeather(QPainter& painter, const QRectF& board, QRandomGenerator& random) {
    constexpr int kPores = 1500;
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < kPores; ++i) {
        const QPointF at(random.bounded(board.width()), random.bounded(board.height()));
        const double radius = 0.7 + random.bounded(1.3);
        painter.setBrush(shade(0.05 + random.bounded(0.09)));
        painter.drawEllipse(at, radius, radius);
        painter.setBrush(light(random.bounded(0.07)));
        painter.drawEllipse(at - QPointF(0.6, 0.7), radius * 0.6, radius * 0.6);
    }
    QRadialGradient worn(board.width() * 0.5, board.height() * 0.5, board.height() * 0.72, board.width() * 0.5,
                         board.height() * 0.42);
    worn.setColorAt(0, light(0.10));
    worn.setColorAt(0.55, shade(0));
    worn.setColorAt(1, shade(0.30));
    painter.fillRect(board, worn);
}

void paintKraft(QPainter& painter, const QRectF& board, QRandomGenerator& random) {
    constexpr int kFibres = 260;
    painter.setBrush(Qt::NoBrush);
    for (int i = 0; i < kFibres; ++i) {
        const QColor color = random.generateDouble() > 0.45
                                 ? translucent(QColor(92, 60, 24), 0.10 + random.bounded(0.20))
                                 : light(0.10 + random.bounded(0.16));
        const QPointF from(random.bounded(board.width()), random.bounded(board.height()));
        const double angle = random.bounded(2 * std::numbers::pi);
        const double length = 2 + random.bounded(6.0);
        QPainterPath fibre(from);
        fibre.quadTo(from + QPointF(length * 0.5 + random.bounded(2.0), random.bounded(3.0)),
                     from + QPointF(std::cos(angle), std::sin(angle)) * length);
        painter.setPen(QPen(color, 0.8));
        painter.drawPath(fibre);
    }
}

void fillPolygon(QPainter& painter, std::initializer_list<QPointF> corners, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(QPolygonF(corners));
}

void paintGloss(QPainter& painter, const QRectF& board) {
    const double w = board.width();
    const double h = board.height();
    fillPolygon(painter, {{w * 0.42, 0}, {w * 0.80, 0}, {w * 0.36, h}, {-2, h}}, light(0.17));
    fillPolygon(painter, {{w * 0.86, 0}, {w * 0.94, 0}, {w * 0.50, h}, {w * 0.42, h}}, light(0.10));
}

// ---- patterns ---------------------------------------------------------------------------------------------------

void paintRows(QPainter& painter, const QRectF& area, double first, double pitch) {
    for (double y = first; y < area.bottom(); y += pitch) painter.drawLine(QLineF(area.left(), y, area.right(), y));
}

void paintColumns(QPainter& painter, const QRectF& area, double first, double pitch) {
    for (double x = area.left() + first; x < area.right(); x += pitch) {
        painter.drawLine(QLineF(x, area.top(), x, area.bottom()));
    }
}

void paintDots(QPainter& painter, const QRectF& area) {
    bool staggered = false;
    for (double y = 9; y < area.bottom(); y += 11, staggered = !staggered) {
        for (double x = area.left() + (staggered ? 14 : 8); x < area.right(); x += 12) {
            painter.drawEllipse(QPointF(x, y), 1.7, 1.7);
        }
    }
}

void paintStripes(QPainter& painter, const QRectF& area) {
    const double h = area.height();
    for (double x = area.left() - h; x < area.right(); x += 24) {
        painter.drawPolygon(QPolygonF({{x, h}, {x + 11, h}, {x + 11 + h * 0.6, 0}, {x + h * 0.6, 0}}));
    }
}

void paintWaves(QPainter& painter, const QRectF& area) {
    for (double y = 4; y < area.bottom() + 10; y += 13) {
        QPainterPath wave(QPointF(area.left(), y));
        for (double x = area.left() + 1.5; x <= area.right() + 2; x += 1.5) {
            wave.lineTo(x, y + std::sin((x - area.left()) / 11) * 3.6);
        }
        painter.drawPath(wave);
    }
}

void paintChecks(QPainter& painter, const QRectF& area) {
    for (double y = 0; y < area.bottom(); y += 28) painter.drawRect(QRectF(area.left(), y, area.width(), 14));
    for (double x = area.left(); x < area.right(); x += 28) painter.drawRect(QRectF(x, 0, 14, area.height()));
}

}  // namespace

void paintMaterial(QPainter& painter, const CoverLook& look, const QRectF& board) {
    QRandomGenerator random(look.seed);
    switch (look.material) {
        case CoverMaterial::classic: break;
        case CoverMaterial::cloth: paintCloth(painter, board, random); break;
        case CoverMaterial::leather: paintLeather(painter, board, random); break;
        case CoverMaterial::kraft: paintKraft(painter, board, random); break;
        case CoverMaterial::glossy: paintGloss(painter, board); break;
    }
}

void paintPattern(QPainter& painter, const CoverLook& look, const CoverPalette& palette, const QRectF& area) {
    const auto stroke = [&](double width) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(translucent(palette.pattern, palette.patternAlpha), width));
    };
    const auto fill = [&](double share) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(translucent(palette.pattern, palette.patternAlpha * share));
    };
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    switch (look.pattern) {
        case CoverPattern::none: break;
        case CoverPattern::lines:
            stroke(1.2);
            paintRows(painter, area, 18, 12);
            break;
        case CoverPattern::grid:
            stroke(1);
            paintRows(painter, area, 6.5, 14);
            paintColumns(painter, area, 8.5, 14);
            break;
        case CoverPattern::dots:
            fill(1);
            paintDots(painter, area);
            break;
        case CoverPattern::stripes:
            fill(0.75);
            paintStripes(painter, area);
            break;
        case CoverPattern::waves:
            stroke(1.6);
            paintWaves(painter, area);
            break;
        case CoverPattern::checks:
            fill(0.55);
            paintChecks(painter, area);
            break;
    }
    painter.restore();
}

}  // namespace tessary
