#pragma once

#include <QtGui/QColor>

#include "desktop/shelf/cover_look.h"

namespace tessary {

inline constexpr QColor kCoverInk{0x20, 0x1C, 0x17};

[[nodiscard]] QColor mixed(const QColor& a, const QColor& b, double share);
[[nodiscard]] QColor translucent(const QColor& color, double alpha);
[[nodiscard]] inline QColor shade(double alpha) { return translucent(Qt::black, alpha); }
[[nodiscard]] inline QColor light(double alpha) { return translucent(Qt::white, alpha); }

/// Relative luminance, 0 to 1.
[[nodiscard]] double luminance(const QColor& color);
/// 1 to 21.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);
/// `color`, moved towards dark or light until it stands out from `ground` by `ratio`, or as far as that goes.
[[nodiscard]] QColor readable(const QColor& color, const QColor& ground, double ratio);

/// The colours of one cover.
struct CoverPalette {
    QColor board;
    QColor pattern;  ///< opaque; drawn with `patternAlpha`
    double patternAlpha = 0;
    QColor spine;    ///< over the board, with its alpha
    QColor plate;    ///< under an embossed label; invalid when the foil stands out from the bare board
    QColor foil;     ///< of an embossed label and of stitches
    QColor band;
    QColor ribbon;
};

[[nodiscard]] CoverPalette coverPalette(const CoverLook& look);

}  // namespace tessary
