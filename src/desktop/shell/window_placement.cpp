#include "desktop/shell/window_placement.h"

#include <QtCore/QRegularExpression>

namespace tessary {

QString WindowPlacement::toText() const {
    QString text = QString("%1x%2").arg(size.width()).arg(size.height());
    const auto sign = [](int value) { return value < 0 ? "" : "+"; };
    if (position) text += sign(position->x()) + QString::number(position->x());
    if (position) text += sign(position->y()) + QString::number(position->y());
    return isMaximized ? text + " maximized" : text;
}

std::optional<WindowPlacement> WindowPlacement::parse(const QString& text) {
    static const QRegularExpression form(R"(^(\d{1,5})x(\d{1,5})(?:([+-]\d{1,5})([+-]\d{1,5}))?( maximized)?$)");
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) return std::nullopt;
    WindowPlacement placement{.size = {match.captured(1).toInt(), match.captured(2).toInt()},
                              .position = {},
                              .isMaximized = !match.captured(5).isEmpty()};
    if (!match.captured(3).isEmpty()) placement.position = QPoint(match.captured(3).toInt(), match.captured(4).toInt());
    return placement;
}

WindowPlacement WindowPlacement::fittedTo(const QList<QRect>& screens) const {
    constexpr int kWithinReach = 120;  // of the window's upper edge, where it is taken hold of
    constexpr int kEdgeHeight = 32;
    if (screens.isEmpty()) return *this;
    WindowPlacement fitted = *this;
    fitted.position.reset();
    QRect screen = screens.front();
    for (const QRect& candidate : screens) {
        if (!position) break;
        const QRect reachable = candidate & QRect(*position, QSize(size.width(), kEdgeHeight));
        if (reachable.width() < std::min(kWithinReach, size.width()) || reachable.height() < kEdgeHeight) continue;
        fitted.position = position;
        screen = candidate;
        break;
    }
    fitted.size = size.boundedTo(screen.size());
    return fitted;
}

}  // namespace tessary
