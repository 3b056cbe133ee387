#pragma once

#include <QtCore/QStringList>
#include <QtGui/QFont>
#include <QtGui/QPainter>
#include <initializer_list>

namespace tessary {

/// Text broken into lines for one width.
struct CoverText {
    QStringList lines;
    QFont font;
    qreal lineHeight = 0;
    bool rightToLeft = false;

    [[nodiscard]] qreal height() const { return lineHeight * static_cast<qreal>(lines.size()); }
};

/// How a text may be set.
struct CoverTextStyle {
    std::initializer_list<int> sizes;  ///< cover units, largest first: the first that breaks no word is taken
    QFont::Weight weight = QFont::Bold;
    int maxLines = 1;
    qreal leading = 4;  ///< line height beyond the size
};

/// What does not fit is elided at the end of the last line.
[[nodiscard]] CoverText layOutCoverText(const QString& text, qreal width, const CoverTextStyle& style);

/// Draws it from the top of `box` and along its `side`, left or right, in the painter's pen.
void drawCoverText(QPainter& painter, const CoverText& text, const QRectF& box, Qt::Alignment side);

}  // namespace tessary
