#include "desktop/shelf/cover_text.h"

#include <QtCore/QTextBoundaryFinder>
#include <QtGui/QFontMetricsF>
#include <QtGui/QTextLayout>

namespace tessary {
namespace {

constexpr QChar kSoftHyphen(0xAD);

QFont coverFont(int size, QFont::Weight weight) {
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(size);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

struct Broken {
    QList<int> starts;  // of the lines
    bool wordsWhole = true;
};

Broken broken(const QString& text, const QFont& font, qreal width, QTextOption::WrapMode mode) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(mode);
    layout.setTextOption(option);
    Broken result;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        result.starts.append(line.textStart());
        if (line.naturalTextWidth() > width) result.wordsWhole = false;
    }
    layout.endLayout();
    return result;
}

bool mayBreakAt(const QString& text, int position) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    finder.setPosition(position);
    return finder.isAtBoundary();
}

/// A line as it is drawn: with a hyphen where it ends inside a word.
QString shown(QString line, bool insideWord) {
    const bool hyphen = insideWord || line.endsWith(kSoftHyphen);
    line = line.remove(kSoftHyphen).trimmed();
    return hyphen ? line + QLatin1Char('-') : line;
}

QStringList linesOf(const QString& text, const QList<int>& starts, const QFont& font, qreal width, int maxLines) {
    QStringList lines;
    const int count = qMin(static_cast<int>(starts.size()), maxLines);
    for (int i = 0; i < count; ++i) {
        const bool last = i + 1 == count;
        const int start = starts.at(i);
        const int end = i + 1 < starts.size() ? starts.at(i + 1) : static_cast<int>(text.size());
        if (last) {
            const QString rest = text.mid(start).remove(kSoftHyphen);
            lines.append(QFontMetricsF(font).elidedText(rest, Qt::ElideRight, width));
        } else {
            lines.append(shown(text.mid(start, end - start), !mayBreakAt(text, end)));
        }
    }
    return lines;
}

}  // namespace

CoverText layOutCoverText(const QString& text, qreal width, const CoverTextStyle& style) {
    const QString plain = text.simplified();
    CoverText result;
    if (plain.isEmpty()) return result;
    result.rightToLeft = plain.isRightToLeft();
    Broken lines;
    int chosen = 0;
    for (const int size : style.sizes) {
        chosen = size;
        result.font = coverFont(size, style.weight);
        lines = broken(plain, result.font, width, QTextOption::WordWrap);
        if (lines.wordsWhole && lines.starts.size() <= style.maxLines) break;
    }
    if (!lines.wordsWhole) {
        const qreal hyphen = QFontMetricsF(result.font).horizontalAdvance(QLatin1Char('-'));
        lines = broken(plain, result.font, width - hyphen, QTextOption::WrapAtWordBoundaryOrAnywhere);
    }
    result.lineHeight = chosen + style.leading;
    result.lines = linesOf(plain, lines.starts, result.font, width, style.maxLines);
    return result;
}

void drawCoverText(QPainter& painter, const CoverText& text, const QRectF& box, Qt::Alignment side) {
    painter.setFont(text.font);
    painter.setLayoutDirection(text.rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    const int flags =
        static_cast<int>((side | Qt::AlignAbsolute | Qt::AlignVCenter).toInt()) | Qt::TextDontClip | Qt::TextSingleLine;
    QRectF line(box.left(), box.top(), box.width(), text.lineHeight);
    for (const QString& words : text.lines) {
        painter.drawText(line, flags, words);
        line.translate(0, text.lineHeight);
    }
}

}  // namespace tessary
