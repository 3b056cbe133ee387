#include "desktop/shelf/cover_item.h"

#include <QtCore/QCache>
#include <QtCore/QThreadPool>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <atomic>
#include <cmath>
#include <mutex>
#include <utility>

#include "desktop/desk/desk.h"
#include "library/library_json.h"

namespace tessary {
namespace {

using PictureKey = std::pair<CoverLook, int>;

/// Main thread only.
QCache<PictureKey, CoverPicture>& pictures() {
    constexpr int kKilobytes = 64 * 1024;
    static QCache<PictureKey, CoverPicture> cache(kKilobytes);
    return cache;
}

/// FNV-1a: the same on every machine, unlike qHash.
quint32 seedOf(const QString& text) {
    quint32 hash = 2166136261U;
    for (const QChar c : text) hash = (hash ^ c.unicode()) * 16777619U;
    return hash;
}

template <class E>
E named(const QString& name, E otherwise) {
    return enumNamed<E>(name.toStdString()).value_or(otherwise);
}

}  // namespace

/// How a worker reaches the item. A job holds the mutex as long as it paints: an item that goes waits for its own job,
/// so that none outlives the application object.
struct CoverItem::Delivery {
    std::mutex mutex;
    CoverItem* item = nullptr;
    std::atomic<int> newest = 0;  ///< order; older ones need not be painted any more
};

CoverItem::CoverItem(QQuickItem* parent) : QQuickItem(parent), delivery_(std::make_shared<Delivery>()) {
    delivery_->item = this;
    setFlag(ItemHasContents);
    setImplicitSize(kCoverWidth, kCoverHeight);
    connect(this, &CoverItem::lookChanged, this, &QQuickItem::polish);
}

CoverItem::~CoverItem() {
    ++delivery_->newest;
    const std::lock_guard lock(delivery_->mutex);
    delivery_->item = nullptr;
}

CoverLook CoverItem::look() const {
    const QColor color(color_);
    return {.title = title_,
            .subtitle = subtitle_,
            .emoji = emoji_,
            .color = color.isValid() ? color : QColor("#" + toQml(Notebook{}.colorHex)),
            .accent = QColor(accent_),
            .material = named(material_, CoverMaterial::classic),
            .pattern = named(pattern_, CoverPattern::none),
            .labelStyle = named(labelStyle_, CoverLabelStyle::glass),
            .band = band_,
            .ribbon = ribbon_,
            .imagePath = coverImage_,
            .seed = seedOf(notebookId_),
            .dark = dark_};
}

void CoverItem::updatePolish() {
    if (window() == nullptr || width() <= 0) return;
    const CoverLook look = this->look();
    const int pixels = static_cast<int>(std::lround(width() * window()->effectiveDevicePixelRatio()));
    if (pixels == wantedPixels_ && look == wanted_) return;
    wanted_ = look;
    wantedPixels_ = pixels;
    ++delivery_->newest;
    if (const CoverPicture* const ready = pictures().object({look, pixels})) return show(*ready);
    order(look, pixels);
}

void CoverItem::order(const CoverLook& look, int pixels) {
    QThreadPool::globalInstance()->start([delivery = delivery_, number = delivery_->newest.load(), look, pixels] {
        if (number != delivery->newest) return;
        const std::lock_guard lock(delivery->mutex);
        if (delivery->item == nullptr || number != delivery->newest) return;
        CoverItem* const item = delivery->item;
        QMetaObject::invokeMethod(
            item, [item, look, pixels, picture = paintCover(look, pixels)] { item->take(look, pixels, picture); },
            Qt::QueuedConnection);
    });
}

void CoverItem::take(const CoverLook& look, int pixels, const CoverPicture& picture) {
    const auto kilobytes = static_cast<int>(picture.image.sizeInBytes() / 1024);
    pictures().insert({look, pixels}, new CoverPicture(picture), kilobytes);  // the cache owns it
    if (look == wanted_ && pixels == wantedPixels_) show(picture);
}

void CoverItem::show(const CoverPicture& picture) {
    picture_ = picture;
    stale_ = true;
    update();
}

QSGNode* CoverItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    if (picture_.image.isNull()) {
        delete old;
        return nullptr;
    }
    auto* node = static_cast<QSGImageNode*>(old);
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
        stale_ = true;
    }
    if (std::exchange(stale_, false)) {
        node->setTexture(window()->createTextureFromImage(picture_.image, QQuickWindow::TextureHasAlphaChannel));
    }
    // The board fills the item, also while its picture is still that of another size.
    const QRect& frame = picture_.frame;
    const qreal scale = width() / (frame.width() + 2 * frame.x());
    node->setRect(QRectF(frame.x() * scale, frame.y() * scale, frame.width() * scale, frame.height() * scale));
    return node;
}

void CoverItem::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() == before.size()) return;
    polish();
    update();
}

void CoverItem::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) polish();
}

}  // namespace tessary
