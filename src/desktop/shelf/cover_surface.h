#pragma once

#include <QtGui/QPainter>

#include "desktop/shelf/cover_colors.h"

namespace tessary {

/// Draws what the board is made of over its plain colour; `board` in cover units.
void paintMaterial(QPainter& painter, const CoverLook& look, const QRectF& board);

/// Fills `area`, the board without its spine, with the pattern.
void paintPattern(QPainter& painter, const CoverLook& look, const CoverPalette& palette, const QRectF& area);

}  // namespace tessary
