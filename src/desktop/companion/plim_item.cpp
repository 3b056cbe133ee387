#include "desktop/companion/plim_item.h"

#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <QtQuick/QSGTexture>
#include <algorithm>
#include <cmath>
#include <utility>

#include "companion/plim_reaction_names.h"
#include "companion/plim_sampling.h"
#include "desktop/companion/plim_painter.h"

namespace tessary {

namespace {

QString nameOf(PlimReaction reaction) {
    const std::string_view name = rawValue(reaction);
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

}  // namespace

PlimItem::PlimItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    setImplicitSize(size_, size_);
    changes_ = controller_.changed().connect([this] {
        if (!still_) repaint();
        followState();
    });
    clock_.tick = [this](Date now) { tick(now); };
}

PlimItem::~PlimItem() { clock_.stop(); }

void PlimItem::setSize(qreal size) {
    if (size == size_) return;
    size_ = size;
    setImplicitSize(size, size);
    repaint();
    Q_EMIT sizeChanged();
}

void PlimItem::setDark(bool dark) {
    if (std::exchange(dark_, dark) == dark) return;
    repaint();
    Q_EMIT darkChanged();
}

QString PlimItem::reaction() const { return nameOf(reaction_); }

void PlimItem::setReaction(const QString& name) {
    if (name != reaction()) play(name);
}

void PlimItem::play(const QString& name) {
    const std::optional<PlimReaction> wanted = plimReactionNamed(name.toStdString());
    if (!wanted) return;
    const bool other = std::exchange(reaction_, *wanted) != *wanted;
    controller_.play(*wanted);
    if (!other) return;
    repaint();
    Q_EMIT reactionChanged();
}

QString PlimItem::base() const { return nameOf(controller_.player().base()); }

void PlimItem::setBase(const QString& name) {
    const std::optional<PlimReaction> wanted = plimReactionNamed(name.toStdString());
    if (!wanted || *wanted == controller_.player().base()) return;
    controller_.setBase(*wanted);
    Q_EMIT baseChanged();
}

void PlimItem::setStill(bool still) {
    if (std::exchange(still_, still) == still) return;
    repaint();
    followState();
    Q_EMIT stillChanged();
}

void PlimItem::setPaused(bool paused) {
    if (std::exchange(paused_, paused) == paused) return;
    followState();
    Q_EMIT pausedChanged();
}

void PlimItem::setCovered(bool covered) {
    if (std::exchange(covered_, covered) == covered) return;
    followState();
    Q_EMIT coveredChanged();
}

bool PlimItem::isSeen() const {
    if (!isVisible() || window() == nullptr) return false;
    const QWindow::Visibility visibility = window()->visibility();
    return visibility != QWindow::Hidden && visibility != QWindow::Minimized;
}

void PlimItem::followState() {
    const bool runs = isComponentComplete() && !still_ && !paused_ && !covered_ && !controller_.frozen() && isSeen();
    if (runs != isRunning()) runs ? clock_.start() : clock_.stop();
}

void PlimItem::repaint() {
    stale_ = true;
    polish();
    update();
}

void PlimItem::componentComplete() {
    QQuickItem::componentComplete();
    followState();
}

int PlimItem::devicePixels() const {
    constexpr double kMost = 4096;  // far beyond any screen; a picture must have some end
    const double ratio = window() == nullptr ? 1 : window()->effectiveDevicePixelRatio();
    return static_cast<int>(std::ceil(std::clamp(size_ * ratio, 0.0, kMost)));
}

void PlimItem::updatePolish() {
    const int side = devicePixels();
    if (!isSeen() || side <= 0 || (!stale_ && picture_.width() == side)) return;
    // Anew each time: the scene may still show the one before.
    picture_ = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
    const PlimFrame frame = still_ ? plimFrame(reaction_, plimSpec().reaction(reaction_).still) : controller_.frame();
    drawPlim(picture_, frame, {dark_, detailFor(size_)});
    stale_ = false;
    uploaded_ = false;
    ++paints_;
}

QSGNode* PlimItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    auto* node = static_cast<QSGImageNode*>(old);
    if (picture_.isNull()) return node;
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
        uploaded_ = false;
    }
    if (!uploaded_) node->setTexture(window()->createTextureFromImage(picture_));
    uploaded_ = true;
    // The same square that was painted for: a pixel of the picture is a pixel of the display.
    const double side = picture_.width() / window()->effectiveDevicePixelRatio();
    node->setRect((width() - side) / 2, (height() - side) / 2, side, side);
    return node;
}

void PlimItem::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) update();
}

void PlimItem::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange) {
        disconnect(visibility_);
        if (data.window != nullptr)
            visibility_ = connect(data.window, &QWindow::visibilityChanged, this, [this] {
                if (stale_) repaint();
                followState();
            });
    }
    if (change == ItemSceneChange || change == ItemVisibleHasChanged || change == ItemDevicePixelRatioHasChanged) {
        repaint();
        followState();
    }
    QQuickItem::itemChange(change, data);
}

}  // namespace tessary
