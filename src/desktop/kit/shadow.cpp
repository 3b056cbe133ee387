#include "desktop/kit/shadow.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGNinePatchNode>
#include <QtQuick/QSGTexture>
#include <algorithm>
#include <cmath>
#include <vector>

namespace tessary {
namespace {

/// Running mean over `2 * reach + 1` values of every row, written transposed: two calls blur both ways.
std::vector<float> meanOfRows(const std::vector<float>& values, int side, int reach) {
    std::vector<float> result(values.size());
    const auto at = [side](int row, int column) { return static_cast<size_t>(row * side + column); };
    const auto width = static_cast<float>(2 * reach + 1);
    for (int row = 0; row < side; ++row) {
        float sum = 0;
        for (int column = -reach; column < side; ++column) {
            if (column + reach < side) sum += values[at(row, column + reach)];
            if (column - reach > 0) sum -= values[at(row, column - reach - 1)];
            if (column >= 0) result[at(column, row)] = sum / width;
        }
    }
    return result;
}

/// Three running means come close to a bell curve. One dot for a logical pixel: a blur needs no more on any display.
QImage shadowPicture(int blur, int radius, const QColor& color) {
    const int margin = 2 * blur + radius;
    const int side = 2 * margin + 1;
    QImage mask(side, side, QImage::Format_Grayscale8);
    mask.fill(0);
    {
        QPainter painter(&mask);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.drawRoundedRect(QRectF(blur, blur, side - 2 * blur, side - 2 * blur), radius, radius);
    }
    std::vector<float> values;
    values.reserve(static_cast<size_t>(side * side));
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) values.push_back(static_cast<float>(mask.constScanLine(y)[x]) / 255.0F);
    const int reach = std::max(1, blur / 3);
    for (int pass = 0; pass < 6; ++pass) values = meanOfRows(values, side, reach);

    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    const float strength = static_cast<float>(color.alphaF()) * 255.0F;
    for (int y = 0; y < side; ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const float value = values[static_cast<size_t>(y * side + x)];
            const int alpha = std::clamp(static_cast<int>(std::lround(value * strength)), 0, 255);
            row[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
        }
    }
    return picture;
}

}  // namespace

Shadow::Shadow(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &Shadow::pictureChanged, this, &Shadow::repaint);
}

void Shadow::repaint() {
    stale_ = true;
    update();
}

void Shadow::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) update();
}

void Shadow::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange) repaint();
    QQuickItem::itemChange(change, data);
}

QSGNode* Shadow::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    auto* node = static_cast<QSGNinePatchNode*>(old);
    if (width() <= 0 || height() <= 0 || color_.alpha() == 0) {
        delete node;
        stale_ = true;
        return nullptr;
    }
    if (node == nullptr) {
        node = window()->createNinePatchNode();
        stale_ = true;
    }
    const int blur = std::max(1, qRound(blur_));
    const int radius = std::max(0, qRound(radius_));
    if (stale_) node->setTexture(window()->createTextureFromImage(shadowPicture(blur, radius, color_)));
    stale_ = false;
    const QRectF bounds = boundingRect().adjusted(-blur_, -blur_, blur_, blur_);
    const qreal margin = 2 * blur + radius;
    // Corners meet in the middle where the item is smaller than two of them.
    const qreal across = std::min(margin, bounds.width() / 2);
    const qreal down = std::min(margin, bounds.height() / 2);
    node->setBounds(bounds);
    node->setDevicePixelRatio(1);
    node->setPadding(across, down, across, down);
    node->update();
    return node;
}

}  // namespace tessary
