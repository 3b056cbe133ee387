#include "desktop/study/heat_map.h"

#include <QtGui/QPainter>
#include <cmath>

namespace tessary {
namespace {

constexpr int kDaysOfWeek = 7;
constexpr qreal kGapShare = 0.24;     // of the pitch
constexpr qreal kCornerShare = 0.24;  // of a square
constexpr qreal kFrame = 2;

}  // namespace

HeatMap::HeatMap(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &HeatMap::looksChanged, this, [this] {
        const auto weeks = (levels_.size() + kDaysOfWeek - 1) / kDaysOfWeek;
        setImplicitSize(static_cast<qreal>(weeks) * pitch_, kDaysOfWeek * pitch_);
        update();
    });
}

template <class Value>
void HeatMap::set(Value& member, const Value& value) {
    if (member == value) return;
    member = value;
    Q_EMIT looksChanged();
}

void HeatMap::setLevels(const QList<int>& levels) { set(levels_, levels); }
void HeatMap::setShades(const QList<QColor>& shades) { set(shades_, shades); }
void HeatMap::setInk(const QColor& ink) { set(ink_, ink); }
void HeatMap::setPitch(int pitch) { set(pitch_, std::max(4, pitch)); }

void HeatMap::setCurrent(int day) {
    const int known = day >= 0 && day < levels_.size() ? day : -1;
    if (known == current_) return;
    current_ = known;
    update();
    Q_EMIT currentChanged();
}

QRectF HeatMap::squareOf(int day) const {
    const qreal side = pitch_ - std::max<qreal>(2, std::round(pitch_ * kGapShare));
    return {static_cast<qreal>(day / kDaysOfWeek) * pitch_, static_cast<qreal>(day % kDaysOfWeek) * pitch_, side, side};
}

int HeatMap::dayAt(qreal x, qreal y) const {
    if (x < 0 || y < 0 || y >= kDaysOfWeek * pitch_) return -1;
    const int day = static_cast<int>(x / pitch_) * kDaysOfWeek + static_cast<int>(y / pitch_);
    return day < levels_.size() ? day : -1;
}

void HeatMap::paint(QPainter* painter) {
    if (shades_.isEmpty()) return;
    painter->setRenderHint(QPainter::Antialiasing);
    for (qsizetype day = 0; day < levels_.size(); ++day) {
        const QRectF square = squareOf(static_cast<int>(day));
        const qreal corner = square.width() * kCornerShare;
        const bool isFramed = day == levels_.size() - 1 || day == current_;
        painter->setPen(Qt::NoPen);
        painter->setBrush(shades_[std::clamp<qsizetype>(levels_[day], 0, shades_.size() - 1)]);
        painter->drawRoundedRect(square, corner, corner);
        if (!isFramed) continue;
        painter->setPen(QPen(ink_, kFrame));
        painter->setBrush(Qt::NoBrush);
        const qreal inset = kFrame / 2;
        painter->drawRoundedRect(square.adjusted(inset, inset, -inset, -inset), corner, corner);
    }
}

}  // namespace tessary
