#pragma once

#include <QtGui/QImage>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPen>
#include <QtGui/QRadialGradient>
#include <initializer_list>
#include <utility>

namespace tessary {

// What every part of the drawing uses. Angles are in degrees, clockwise, 0 to the right; y points down.

inline constexpr QRgb kInk = 0xFF3A2148;

[[nodiscard]] QPointF dir(double degrees);
[[nodiscard]] inline double lerp(double a, double b, double u) { return a + (b - a) * u; }
[[nodiscard]] inline QPointF lerp(QPointF a, QPointF b, double u) { return a + (b - a) * u; }
[[nodiscard]] double clamp01(double u);
/// 0 up to `from`, 1 from `to` on, with no corner between.
[[nodiscard]] double smoothstep(double from, double to, double u);

[[nodiscard]] QColor tint(QRgb rgb, double alpha = 1);
[[nodiscard]] QColor mixed(QRgb a, QRgb b, double u, double alpha = 1);

using Stops = std::initializer_list<std::pair<double, QColor>>;
[[nodiscard]] QLinearGradient linear(QPointF from, QPointF to, Stops stops);
[[nodiscard]] QRadialGradient radial(QPointF centre, double radius, Stops stops);

[[nodiscard]] QPen roundPen(const QBrush& brush, double width);
[[nodiscard]] QPainterPath ellipse(QPointF centre, double rx, double ry);
/// From `from` on by one curve.
[[nodiscard]] QPainterPath curve(QPointF from, QPointF control1, QPointF control2, QPointF to);
[[nodiscard]] QPainterPath curve(QPointF from, QPointF control, QPointF to);
void fill(QPainter& painter, const QPainterPath& path, const QBrush& brush);

/// A piece of the picture drawn apart: what it paints with CompositionMode_SourceAtop stays within what it painted
/// before, and `put` lays it down with one opacity. Has the target's transform.
class Layer {
public:
    /// `bounds` in the target's present coordinates.
    Layer(QPainter& target, const QRectF& bounds);
    [[nodiscard]] QPainter& painter() { return painter_; }
    /// Once, at the end.
    void put(double opacity = 1);

private:
    QPainter& target_;
    QPoint origin_;
    QImage image_;
    QPainter painter_;
};

}  // namespace tessary
