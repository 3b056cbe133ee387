#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtGui/QColor>

#include "library/notebook.h"

namespace tessary {

/// The board of a cover in its own units; everything on it is drawn in these and scaled as a whole.
inline constexpr qreal kCoverWidth = 144;
inline constexpr qreal kCoverHeight = 190;

/// All that a cover's picture depends on, but its size.
struct CoverLook {
    QString title;
    QString subtitle;
    QString emoji;
    QColor color;
    QColor accent;  ///< of band and ribbon; invalid: chosen to go with `color`
    CoverMaterial material = CoverMaterial::classic;
    CoverPattern pattern = CoverPattern::none;
    CoverLabelStyle labelStyle = CoverLabelStyle::glass;
    bool band = false;
    bool ribbon = false;
    QString imagePath;  ///< empty: none
    quint32 seed = 0;   ///< of the grain; the same seed draws the same cover
    bool dark = false;  ///< it stands on a dark desk

    friend bool operator==(const CoverLook&, const CoverLook&) = default;
    friend std::size_t qHash(const CoverLook& look, std::size_t seed = 0) {
        return qHashMulti(seed, look.title, look.subtitle, look.emoji, look.color.rgba(), look.accent.rgba(),
                          static_cast<int>(look.material), static_cast<int>(look.pattern),
                          static_cast<int>(look.labelStyle), look.band, look.ribbon, look.imagePath, look.seed,
                          look.dark);
    }
};

}  // namespace tessary
