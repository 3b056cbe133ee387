#include "desktop/companion/plim_brush.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessary {

QPointF dir(double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {std::cos(angle), std::sin(angle)};
}

double clamp01(double u) { return std::clamp(u, 0.0, 1.0); }

double smoothstep(double from, double to, double u) {
    const double x = clamp01((u - from) / (to - from));
    return x * x * (3 - 2 * x);
}

QColor tint(QRgb rgb, double alpha) {
    QColor color(rgb);
    color.setAlphaF(static_cast<float>(clamp01(alpha)));
    return color;
}

QColor mixed(QRgb a, QRgb b, double u, double alpha) {
    const auto channel = [u](int x, int y) { return static_cast<int>(std::lround(lerp(x, y, clamp01(u)))); };
    return tint(qRgb(channel(qRed(a), qRed(b)), channel(qGreen(a), qGreen(b)), channel(qBlue(a), qBlue(b))), alpha);
}

QLinearGradient linear(QPointF from, QPointF to, Stops stops) {
    QLinearGradient gradient(from, to);
    for (const auto& [at, color] : stops) gradient.setColorAt(at, color);
    return gradient;
}

QRadialGradient radial(QPointF centre, double radius, Stops stops) {
    QRadialGradient gradient(centre, radius);
    for (const auto& [at, color] : stops) gradient.setColorAt(at, color);
    return gradient;
}

QPen roundPen(const QBrush& brush, double width) { return {brush, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin}; }

QPainterPath ellipse(QPointF centre, double rx, double ry) {
    QPainterPath path;
    path.addEllipse(centre, rx, ry);
    return path;
}

QPainterPath curve(QPointF from, QPointF control1, QPointF control2, QPointF to) {
    QPainterPath path(from);
    path.cubicTo(control1, control2, to);
    return path;
}

QPainterPath curve(QPointF from, QPointF control, QPointF to) {
    QPainterPath path(from);
    path.quadTo(control, to);
    return path;
}

void fill(QPainter& painter, const QPainterPath& path, const QBrush& brush) { painter.fillPath(path, brush); }

Layer::Layer(QPainter& target, const QRectF& bounds) : target_(target) {
    const QTransform& transform = target.worldTransform();
    const QRect here = transform.mapRect(bounds).toAlignedRect();
    const QRect whole(0, 0, target.device()->width(), target.device()->height());
    const QRect kept = here.intersected(whole);
    origin_ = kept.topLeft();
    image_ = QImage(kept.size().expandedTo({1, 1}), QImage::Format_ARGB32_Premultiplied);
    image_.fill(Qt::transparent);
    painter_.begin(&image_);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setWorldTransform(transform * QTransform::fromTranslate(-origin_.x(), -origin_.y()));
}

void Layer::put(double opacity) {
    painter_.end();
    target_.save();
    target_.resetTransform();
    target_.setOpacity(target_.opacity() * clamp01(opacity));
    target_.drawImage(origin_, image_);
    target_.restore();
}

}  // namespace tessary
