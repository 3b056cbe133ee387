#include "desktop/shelf/cover_colors.h"

#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

constexpr QColor kKraftPaper{0xC9, 0xA5, 0x78};
constexpr QColor kGoldFoil{0xF5, 0xE4, 0xB4};
constexpr QColor kRedSilk{0xAC, 0x33, 0x27};
constexpr QColor kGoldSilk{0xE0, 0xB6, 0x4A};
constexpr double kLightBoard = 0.22;  // luminance
// Above the 4.5 that text needs, since grain and the light from above move the board's colour under it.
constexpr double kFoilContrast = 5.6;
constexpr double kDarkFoilContrast = 6.5;

double linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

QColor foilOn(const QColor& board) {
    const bool dark = luminance(board) > kLightBoard;
    return dark ? readable(mixed(board, kCoverInk, 0.55), board, kDarkFoilContrast)
                : readable(kGoldFoil, board, kFoilContrast);
}

/// The board's own colour, pressed in: as far from the foil as it takes to read.
QColor plateOn(const QColor& board, const QColor& foil) {
    const QColor away = luminance(foil) > luminance(board) ? QColor(Qt::black) : QColor(Qt::white);
    for (double share = 0.08; share < 1; share += 0.04) {
        const QColor plate = mixed(board, away, share);
        if (contrast(foil, plate) >= kFoilContrast) return plate;
    }
    return away;
}

}  // namespace

QColor mixed(const QColor& a, const QColor& b, double share) {
    const auto between = [share](int from, int to) {
        return from + static_cast<int>(std::lround((to - from) * share));
    };
    return {between(a.red(), b.red()), between(a.green(), b.green()), between(a.blue(), b.blue())};
}

QColor translucent(const QColor& color, double alpha) {
    QColor result = color;
    result.setAlphaF(static_cast<float>(std::clamp(alpha, 0.0, 1.0)));
    return result;
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.red() / 255.0) + 0.7152 * linear(color.green() / 255.0) +
           0.0722 * linear(color.blue() / 255.0);
}

double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readable(const QColor& color, const QColor& ground, double ratio) {
    const QColor towards = contrast(ground, Qt::black) >= contrast(ground, Qt::white) ? Qt::black : Qt::white;
    for (double share = 0; share < 1; share += 0.02) {
        const QColor candidate = mixed(color, towards, share);
        if (contrast(candidate, ground) >= ratio) return candidate;
    }
    return towards;
}

CoverPalette coverPalette(const CoverLook& look) {
    const bool kraft = look.material == CoverMaterial::kraft;
    CoverPalette palette;
    palette.board = kraft ? mixed(kKraftPaper, look.color, 0.10) : look.color;
    const bool lightBoard = luminance(palette.board) > kLightBoard;
    palette.pattern = kraft        ? mixed(look.color, kCoverInk, 0.25)
                      : lightBoard ? QColor(40, 26, 8)
                                   : QColor(255, 250, 236);
    palette.patternAlpha = kraft ? 0.42 : lightBoard ? 0.17 : 0.22;
    switch (look.material) {
        case CoverMaterial::classic: palette.spine = translucent(mixed(look.color, kCoverInk, 0.42), 0.75); break;
        case CoverMaterial::cloth: palette.spine = translucent(mixed(look.color, kCoverInk, 0.42), 0.92); break;
        case CoverMaterial::kraft: palette.spine = translucent(mixed(look.color, kCoverInk, 0.30), 0.92); break;
        case CoverMaterial::leather:
        case CoverMaterial::glossy: palette.spine = shade(0.14); break;
    }
    palette.foil = foilOn(palette.board);
    const bool uneven = look.pattern != CoverPattern::none || !look.imagePath.isEmpty() ||
                        look.material == CoverMaterial::glossy || look.material == CoverMaterial::cloth;
    if (uneven || contrast(palette.foil, palette.board) < kFoilContrast) {
        palette.plate = plateOn(palette.board, palette.foil);
    }
    palette.band = look.accent.isValid() ? look.accent : mixed(look.color, kCoverInk, 0.55);
    const bool reddish = look.color.hslHueF() < 0.06F || look.color.hslHueF() > 0.92F;
    palette.ribbon = look.accent.isValid() ? look.accent : reddish && !kraft ? kGoldSilk : kRedSilk;
    return palette;
}

}  // namespace tessary
