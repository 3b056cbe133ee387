#include "desktop/shelf/cover_label.h"

#include <QtCore/QTextBoundaryFinder>
#include <QtGui/QGlyphRun>
#include <QtGui/QTextLayout>
#include <algorithm>

#include "desktop/shelf/cover_text.h"

namespace tessary {
namespace {

constexpr QColor kStickerPaper{0xFF, 0xFD, 0xF6};
constexpr QColor kGlassSubtitle{0x44, 0x3C, 0x32};
constexpr QColor kStickerSubtitle{0x5A, 0x51, 0x46};

QFont emojiFont(int size) {
    QFont font(QStringLiteral("Noto Color Emoji"));
    font.setPixelSize(size);
    return font;
}

QString firstCharacter(const QString& text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    const auto end = finder.toNextBoundary();
    return end > 0 ? text.left(end) : QString();
}

/// The emoji to show; empty when there is none or no font has it, which would draw an empty box.
QString shownEmoji(const QString& emoji) {
    const QString first = firstCharacter(emoji.trimmed());
    return canDrawEmoji(first) ? first : QString();
}

void drawEmoji(QPainter& painter, const QString& emoji, const QRectF& box, Qt::Alignment side) {
    painter.setFont(emojiFont(static_cast<int>(box.height())));
    painter.drawText(box, static_cast<int>((side | Qt::AlignAbsolute | Qt::AlignVCenter).toInt()) | Qt::TextDontClip,
                     emoji);
}

/// What stands above each other in a label.
struct Column {
    QString emoji;
    CoverText title;
    CoverText subtitle;

    [[nodiscard]] bool hasText() const { return !title.lines.isEmpty() || !subtitle.lines.isEmpty(); }
    [[nodiscard]] bool isEmpty() const { return emoji.isEmpty() && !hasText(); }
    /// Where everything stands: the side from which the title is read, or the subtitle without one.
    [[nodiscard]] Qt::Alignment side() const {
        return (title.lines.isEmpty() ? subtitle : title).rightToLeft ? Qt::AlignRight : Qt::AlignLeft;
    }
};

Column columnOf(const CoverLook& look, qreal width, const CoverTextStyle& title) {
    return {.emoji = shownEmoji(look.emoji),
            .title = layOutCoverText(look.title, width, title),
            .subtitle = layOutCoverText(look.subtitle, width,
                                        {.sizes = {12, 11}, .weight = QFont::Medium, .maxLines = 1, .leading = 4})};
}

/// Draws title and subtitle from `box`'s top.
void drawTexts(QPainter& painter, const Column& column, QRectF box, const QColor& title, const QColor& subtitle) {
    painter.setPen(title);
    drawCoverText(painter, column.title, box, column.side());
    box.setTop(box.top() + column.title.height());
    painter.setPen(subtitle);
    drawCoverText(painter, column.subtitle, box, column.side());
}

// ---- glass ------------------------------------------------------------------------------------------------------

void paintGlass(QPainter& painter, const CoverLook& look, const QRectF& space) {
    constexpr qreal kPadding = 8;
    constexpr qreal kEmoji = 38;
    const Column column =
        columnOf(look, space.width() - 2 * kPadding, {.sizes = {13, 12, 11}, .weight = QFont::Bold, .maxLines = 3});
    if (!column.emoji.isEmpty()) {
        painter.setPen(kCoverInk);
        drawEmoji(painter, column.emoji, {space.left(), 20, space.width(), kEmoji}, column.side());
    }
    if (!column.hasText()) return;
    const qreal height = column.title.height() + column.subtitle.height() + 2 * kPadding;
    const QRectF pane(space.left(), space.bottom() - 14 - height, space.width(), height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade(0.10));
    painter.drawRoundedRect(pane.translated(0, 1.2), 8, 8);
    painter.setPen(QPen(light(0.90), 1));
    painter.setBrush(light(0.79));
    painter.drawRoundedRect(pane.adjusted(0.5, 0.5, -0.5, -0.5), 7.5, 7.5);
    drawTexts(painter, column, pane.adjusted(kPadding, kPadding, -kPadding, -kPadding), kCoverInk, kGlassSubtitle);
}

// ---- sticker ----------------------------------------------------------------------------------------------------

void paintStickerPaper(QPainter& painter, const QRectF& paper, const QColor& keyline) {
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 4; ++i) {
        painter.setBrush(shade(0.07));
        painter.drawRoundedRect(paper.translated(0, 1.2).adjusted(-i * 0.8, -i * 0.5, i * 0.8, i), 6 + i, 6 + i);
    }
    painter.setBrush(kStickerPaper);
    painter.drawRoundedRect(paper, 6, 6);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(keyline, 1));
    painter.drawRoundedRect(paper.adjusted(3.5, 3.5, -3.5, -3.5), 3.5, 3.5);
}

void paintSticker(QPainter& painter, const CoverLook& look, const QRectF& space) {
    constexpr qreal kPadding = 10;
    constexpr qreal kEmoji = 20;
    constexpr qreal kEmojiRow = 25;
    constexpr qreal kTilt = -1.5;  // degrees
    const bool hasEmoji = !shownEmoji(look.emoji).isEmpty();
    const Column column = columnOf(look, space.width() - 2 * kPadding + 2,
                                   {.sizes = {13, 12, 11}, .weight = QFont::Bold, .maxLines = hasEmoji ? 4 : 5});
    const qreal blank = column.isEmpty() ? 44 : 0;  // room to write on
    const qreal gap = column.subtitle.lines.isEmpty() ? 0 : 1;
    const qreal height = (hasEmoji ? kEmojiRow : 0) + column.title.height() + gap + column.subtitle.height() + blank;
    const QRectF paper(space.left(), 24, space.width(), height + 2 * kPadding);

    painter.save();
    painter.translate(paper.center());
    painter.rotate(kTilt);
    painter.translate(-paper.center());
    const QColor keyline = mixed(kStickerPaper, look.color, 0.55);
    paintStickerPaper(painter, paper, keyline);
    QRectF inside = paper.adjusted(kPadding, kPadding, 2 - kPadding, -kPadding);
    if (column.isEmpty()) {
        painter.setPen(QPen(translucent(keyline, 0.6), 1));
        for (const qreal y : {14.0, 28.0, 42.0}) {
            painter.drawLine(QLineF(inside.left(), inside.top() + y, inside.right() - 2, inside.top() + y));
        }
    }
    if (hasEmoji) {
        painter.setPen(kCoverInk);
        drawEmoji(painter, column.emoji, {inside.left(), inside.top(), inside.width(), kEmoji}, column.side());
        inside.setTop(inside.top() + kEmojiRow);
    }
    drawTexts(painter, column, inside, kCoverInk, kStickerSubtitle);
    painter.restore();
}

// ---- embossed ---------------------------------------------------------------------------------------------------

/// A field of the board pressed flat, so that letters do not lie across a pattern.
void paintPlate(QPainter& painter, const QRectF& plate, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(light(0.28));
    painter.drawRoundedRect(plate.translated(0, 1), 5, 5);
    painter.setBrush(mixed(color, Qt::black, 0.30));
    painter.drawRoundedRect(plate, 5, 5);
    painter.setBrush(color);
    painter.drawRoundedRect(plate.adjusted(0.8, 1.2, -0.6, 0), 4.5, 4.5);
}

void paintEmbossed(QPainter& painter, const CoverLook& look, const CoverPalette& palette, const QRectF& space) {
    constexpr qreal kEmoji = 24;
    constexpr qreal kEmojiRow = 31;
    constexpr qreal kRule = 2;
    constexpr qreal kGap = 6;
    constexpr qreal kPlatePadding = 8;
    const bool hasEmoji = !shownEmoji(look.emoji).isEmpty();
    const bool hasPlate = palette.plate.isValid();
    const qreal inset = hasPlate ? kPlatePadding : 0;
    const Column column =
        columnOf(look, space.width() - 2 * inset,
                 {.sizes = {15, 14, 13, 12, 11}, .weight = QFont::Bold, .maxLines = hasEmoji ? 3 : 4});
    if (column.isEmpty()) return;

    const bool ruled = column.hasText();
    const qreal height =
        (hasEmoji ? kEmojiRow : 0) + column.title.height() + (ruled ? 2 * kGap + kRule : 0) + column.subtitle.height();
    QRectF box(space.left() + inset, hasPlate ? 32 : 34, space.width() - 2 * inset, height);
    if (hasPlate) paintPlate(painter, box.adjusted(-inset, -inset, inset, inset), palette.plate);

    if (hasEmoji) {
        painter.setPen(palette.foil);
        drawEmoji(painter, column.emoji, {box.left(), box.top(), box.width(), kEmoji}, column.side());
        box.setTop(box.top() + kEmojiRow);
    }
    // The edge of the press catches light below dark letters and shadow above light ones.
    const bool lightFoil = luminance(palette.foil) > luminance(hasPlate ? palette.plate : palette.board);
    const QRectF edge = box.translated(0, lightFoil ? -0.8 : 0.8);
    const QColor counter = lightFoil ? shade(0.55) : light(0.34);
    painter.setPen(counter);
    drawCoverText(painter, column.title, edge, column.side());
    painter.setPen(palette.foil);
    drawCoverText(painter, column.title, box, column.side());
    if (!ruled) return;
    box.setTop(box.top() + column.title.height() + kGap);
    const qreal from = column.side() == Qt::AlignRight ? box.right() - 24 : box.left();
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.foil);
    painter.drawRoundedRect(QRectF(from, box.top(), 24, kRule), 1, 1);
    box.setTop(box.top() + kRule + kGap - 1);
    painter.setPen(palette.foil);
    drawCoverText(painter, column.subtitle, box, column.side());
}

}  // namespace

bool canDrawEmoji(const QString& emoji) {
    if (emoji.isEmpty()) return false;
    QTextLayout layout(firstCharacter(emoji), emojiFont(20));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    return !runs.isEmpty() &&
           std::ranges::none_of(runs, [](const QGlyphRun& run) { return run.glyphIndexes().contains(0); });
}

void paintCoverLabel(QPainter& painter, const CoverLook& look, const CoverPalette& palette, const QRectF& space) {
    switch (look.labelStyle) {
        case CoverLabelStyle::glass: return paintGlass(painter, look, space);
        case CoverLabelStyle::sticker: return paintSticker(painter, look, space);
        case CoverLabelStyle::embossed: return paintEmbossed(painter, look, palette, space);
    }
}

}  // namespace tessary
