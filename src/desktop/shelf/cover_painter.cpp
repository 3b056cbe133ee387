#include "desktop/shelf/cover_painter.h"

#include <QtGui/QImageReader>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <cmath>

#include "desktop/shelf/cover_label.h"
#include "desktop/shelf/cover_surface.h"

namespace tessary {
namespace {

constexpr qreal kPageBlock = 3;  // how far the pages show below and beside the board
constexpr QRectF kBoard{0, 0, kCoverWidth - kPageBlock, kCoverHeight - kPageBlock};
constexpr qreal kSpine = 15;
constexpr qreal kLeftRadius = 4;
constexpr qreal kRightRadius = 9;
// What is drawn beyond the board.
constexpr qreal kSideBleed = 18;
constexpr qreal kTopBleed = 12;
constexpr qreal kBottomBleed = 28;

/// A rectangle with the corners of a book: tight at the spine, wide at the fore edge.
QPainterPath bookPath(const QRectF& box, qreal spineRadius, qreal foreRadius) {
    QPainterPath path;
    path.moveTo(box.left() + spineRadius, box.top());
    path.lineTo(box.right() - foreRadius, box.top());
    path.quadTo(box.topRight(), box.topRight() + QPointF(0, foreRadius));
    path.lineTo(box.right(), box.bottom() - foreRadius);
    path.quadTo(box.bottomRight(), box.bottomRight() - QPointF(foreRadius, 0));
    path.lineTo(box.left() + spineRadius, box.bottom());
    path.quadTo(box.bottomLeft(), box.bottomLeft() - QPointF(0, spineRadius));
    path.lineTo(box.left(), box.top() + spineRadius);
    path.quadTo(box.topLeft(), box.topLeft() + QPointF(spineRadius, 0));
    return path;
}

/// Thin layers that add up to a soft edge `blur` wide.
void paintShadow(QPainter& painter, const QRectF& box, qreal blur, const QColor& color, double strength) {
    constexpr int kLayers = 14;
    painter.setPen(Qt::NoPen);
    painter.setBrush(translucent(color, 1 - std::pow(1 - strength, 1.0 / kLayers)));
    for (int i = 0; i < kLayers; ++i) {
        const qreal grow = blur * (1 - 2.0 * i / kLayers) * 0.5;
        painter.drawRoundedRect(box.adjusted(-grow, -grow, grow, grow), 6 + grow, 6 + grow);
    }
}

void paintShadows(QPainter& painter, bool dark) {
    const QColor color = dark ? QColor(Qt::black) : QColor(0x3D, 0x2E, 0x17);
    const QRectF book(0, 0, kCoverWidth, kCoverHeight);
    paintShadow(painter, book.adjusted(5, 10, -3, 1), 22, color, dark ? 0.50 : 0.20);
    paintShadow(painter, book.adjusted(2, 3, 0, 1), 6, color, dark ? 0.45 : 0.22);
}

void paintRibbon(QPainter& painter, const QColor& silk) {
    constexpr qreal kTop = kCoverHeight - 6;
    constexpr qreal kEnd = kCoverHeight + 24;
    constexpr qreal kLeft = 43;
    constexpr qreal kRight = kLeft + 10;
    painter.setPen(Qt::NoPen);
    painter.setBrush(silk);
    painter.drawPolygon(
        QPolygonF({{kLeft, kTop}, {kRight, kTop}, {kRight, kEnd}, {(kLeft + kRight) / 2, kEnd - 6}, {kLeft, kEnd}}));
    painter.fillRect(QRectF(kLeft, kTop, 3, kEnd - kTop - 4), shade(0.14));
    painter.fillRect(QRectF(kRight - 3, kTop, 1, kEnd - kTop - 4), light(0.18));
    QLinearGradient under(0, kTop, 0, kTop + 13);
    under.setColorAt(0.4, shade(0.40));
    under.setColorAt(1, shade(0));
    painter.fillRect(QRectF(kLeft, kTop, kRight - kLeft, 13), under);
}

void paintPageBlock(QPainter& painter, bool dark) {
    const QRectF block(kPageBlock, kPageBlock, kCoverWidth - kPageBlock, kCoverHeight - kPageBlock);
    painter.setBrush(dark ? QColor(0xB9, 0xAE, 0x9B) : QColor(0xF3, 0xEC, 0xDD));
    painter.setPen(QPen(shade(0.22), 1));
    painter.drawPath(bookPath(block.adjusted(0, 0, -0.5, -0.5), 3, kRightRadius));
    painter.setPen(QPen(shade(0.16), 0.8));
    painter.drawLine(QLineF(6, kCoverHeight - 1.7, kCoverWidth - 9, kCoverHeight - 1.7));
    painter.drawLine(QLineF(kCoverWidth - 1.7, 8, kCoverWidth - 1.7, kCoverHeight - 9));
}

/// Fills `area` with the middle of the picture; false when it can't be read.
bool paintImage(QPainter& painter, const QString& path, const QRectF& area) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize wanted = painter.transform().mapRect(area).size().toSize();
    const QSize size = reader.size();
    // A picture that was turned has the other proportions; half as large again leaves room for it.
    if (size.isValid()) reader.setScaledSize(size.scaled(wanted * 1.5, Qt::KeepAspectRatioByExpanding));
    const QImage image = reader.read();
    if (image.isNull()) return false;
    QRectF source(QPointF(), area.size().scaled(image.size(), Qt::KeepAspectRatio));
    source.moveCenter(QRectF(image.rect()).center());
    painter.drawImage(area, image, source);
    return true;
}

void paintLightFromAbove(QPainter& painter, bool glossy) {
    QLinearGradient diagonal(0, 0, kBoard.width() * 0.4, kBoard.height());
    diagonal.setColorAt(0, light(glossy ? 0.24 : 0.10));
    diagonal.setColorAt(0.5, light(0));
    diagonal.setColorAt(0.5001, shade(0));
    diagonal.setColorAt(1, shade(glossy ? 0.20 : 0.12));
    painter.fillRect(kBoard, diagonal);
}

void paintSpine(QPainter& painter, const CoverPalette& palette) {
    const QRectF spine(0, 0, kSpine, kBoard.height());
    painter.fillRect(spine, palette.spine);
    QLinearGradient round(0, 0, kSpine, 0);
    round.setColorAt(0, shade(0.28));
    round.setColorAt(0.35, light(0.16));
    round.setColorAt(0.8, shade(0.06));
    round.setColorAt(1, shade(0.26));
    painter.fillRect(spine, round);
    QLinearGradient crease(kSpine, 0, kSpine + 7, 0);
    crease.setColorAt(0, light(0.28));
    crease.setColorAt(0.3, shade(0.10));
    crease.setColorAt(1, shade(0));
    painter.fillRect(QRectF(kSpine, 0, 7, kBoard.height()), crease);
}

void paintStitches(QPainter& painter, const QColor& thread) {
    constexpr qreal kInset = 7;
    const auto seam = [&](QPointF offset, const QColor& color) {
        QPen pen(color, 1.3, Qt::CustomDashLine, Qt::RoundCap);
        pen.setDashPattern({2.2, 3.2});
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        QPainterPath path(QPointF(kSpine + kInset, kInset));
        const qreal right = kBoard.right() - kInset;
        const qreal bottom = kBoard.bottom() - kInset;
        path.lineTo(right - 5, kInset);
        path.quadTo(right, kInset, right, kInset + 5);
        path.lineTo(right, bottom - 5);
        path.quadTo(right, bottom, right - 5, bottom);
        path.lineTo(kSpine + kInset, bottom);
        painter.drawPath(path.translated(offset));
    };
    seam({0, 0.9}, shade(0.30));
    seam({0, 0}, translucent(thread, 0.75));
}

void paintBoard(QPainter& painter, const CoverLook& look, const CoverPalette& palette) {
    painter.save();
    painter.setClipPath(bookPath(kBoard, kLeftRadius, kRightRadius));
    painter.fillRect(kBoard, palette.board);
    const QRectF beside = kBoard.adjusted(kSpine, 0, 0, 0);
    const bool pictured = !look.imagePath.isEmpty() && paintImage(painter, look.imagePath, beside);
    paintLightFromAbove(painter, look.material == CoverMaterial::glossy);
    if (!pictured && look.material != CoverMaterial::glossy) paintMaterial(painter, look, kBoard);
    if (!pictured) paintPattern(painter, look, palette, beside);
    paintSpine(painter, palette);
    // A gloss lies over everything.
    if (look.material == CoverMaterial::glossy) paintMaterial(painter, look, kBoard);
    if (look.material == CoverMaterial::leather) paintStitches(painter, palette.foil);
    painter.fillRect(QRectF(4, 0, kBoard.width() - 12, 1), light(0.34));
    painter.restore();

    painter.setPen(QPen(shade(0.22), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(bookPath(kBoard.adjusted(0.5, 0.5, -0.5, -0.5), kLeftRadius, kRightRadius));
}

/// An elastic band, round the whole book.
void paintBand(QPainter& painter, const QColor& color) {
    constexpr qreal kWidth = 8;
    const qreal left = kBoard.width() - 24;
    const qreal height = kBoard.height();
    QLinearGradient under(left - 3, 0, left + kWidth + 3, 0);
    under.setColorAt(0, shade(0));
    under.setColorAt(0.2, shade(0.25));
    under.setColorAt(0.8, shade(0.25));
    under.setColorAt(1, shade(0));
    painter.fillRect(QRectF(left - 3, 0, kWidth + 6, height), under);
    painter.fillRect(QRectF(left, -1, kWidth, height + 2), color);
    for (qreal y = 0; y < height; y += 3) painter.fillRect(QRectF(left, y, kWidth, 1), shade(0.10));
    painter.fillRect(QRectF(left + 1, -1, 1, height + 2), light(0.22));
    painter.fillRect(QRectF(left + kWidth - 1.5, -1, 1.5, height + 2), shade(0.22));
}

}  // namespace

CoverPicture paintCover(const CoverLook& look, int width) {
    const qreal scale = width / kCoverWidth;
    const auto pixels = [scale](qreal units) { return static_cast<int>(std::ceil(units * scale)); };
    CoverPicture picture;
    picture.frame = QRect(-pixels(kSideBleed), -pixels(kTopBleed), width + 2 * pixels(kSideBleed),
                          pixels(kCoverHeight) + pixels(kTopBleed) + pixels(kBottomBleed));
    picture.image = QImage(picture.frame.size(), QImage::Format_ARGB32_Premultiplied);
    picture.image.fill(Qt::transparent);

    QPainter painter(&picture.image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(-picture.frame.topLeft());
    painter.scale(scale, scale);
    const CoverPalette palette = coverPalette(look);
    paintShadows(painter, look.dark);
    if (look.ribbon) paintRibbon(painter, palette.ribbon);
    paintPageBlock(painter, look.dark);
    paintBoard(painter, look, palette);
    if (look.band) paintBand(painter, palette.band);
    const qreal fore = look.band ? 32 : 10;
    paintCoverLabel(painter, look, palette, kBoard.adjusted(kSpine + 10, 0, -fore, 0));
    return picture;
}

}  // namespace tessary
