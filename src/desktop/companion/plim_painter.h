#pragma once

#include <QtGui/QImage>

#include "companion/plim_frame.h"

namespace tessary {

/// How much of the companion is drawn: less of it, and larger, where it is small.
enum class PlimDetail {
    speck,  ///< up to 40 logical pixels
    badge,  ///< up to 56
    full,
};

[[nodiscard]] PlimDetail detailFor(double logicalSize);

struct PlimLook {
    bool dark = false;  ///< drawn on a dark ground
    PlimDetail detail = PlimDetail::full;
};

/// Draws `frame` on `canvas`, a square of premultiplied ARGB, over nothing: what was there is cleared. The frame's 240
/// units fill it. Any thread.
void drawPlim(QImage& canvas, const PlimFrame& frame, PlimLook look);

}  // namespace tessary
