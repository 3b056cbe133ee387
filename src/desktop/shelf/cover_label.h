#pragma once

#include <QtGui/QPainter>

#include "desktop/shelf/cover_colors.h"

namespace tessary {

/// Draws title, subtitle and emoji in the label's style, within the left and right of `space`, the part of the board
/// that nothing else covers.
void paintCoverLabel(QPainter& painter, const CoverLook& look, const CoverPalette& palette, const QRectF& space);

/// Whether some font has this emoji, of which only the first counts. On the main thread or a worker.
[[nodiscard]] bool canDrawEmoji(const QString& emoji);

}  // namespace tessary
