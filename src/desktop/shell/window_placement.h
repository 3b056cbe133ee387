#pragma once

#include <QtCore/QList>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <optional>

namespace tessary {

/// Where a window stands, in device-independent pixels: "1280x800+60+40 maximized".
struct WindowPlacement {
    QSize size;                      ///< while it is not maximised
    std::optional<QPoint> position;  ///< of its frame; absent where the platform doesn't tell
    bool isMaximized = false;

    [[nodiscard]] QString toText() const;
    /// Absent for anything that `toText` would not write.
    [[nodiscard]] static std::optional<WindowPlacement> parse(const QString& text);

    /// As it can be shown on these screens: not larger than the one it is on, and without its position when that would
    /// leave its upper edge out of reach. `screens` are the free areas, the main one first.
    [[nodiscard]] WindowPlacement fittedTo(const QList<QRect>& screens) const;

    friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

}  // namespace tessary
