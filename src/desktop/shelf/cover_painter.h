#pragma once

#include <QtGui/QImage>

#include "desktop/shelf/cover_look.h"

namespace tessary {

/// The picture of a cover at device pixels. Shadow, page block and ribbon reach beyond the board.
struct CoverPicture {
    QImage image;
    QRect frame;  ///< of the image in device pixels, with the board's upper left corner as origin
};

/// Draws a cover whose board is `width` device pixels wide. On any thread, as long as the application object lives;
/// takes some milliseconds.
[[nodiscard]] CoverPicture paintCover(const CoverLook& look, int width);

}  // namespace tessary
