#pragma once

#include <QtCore/QTimer>
#include <QtQuick/QQuickWindow>

#include "desktop/desk/desk.h"
#include "desktop/shell/navigator.h"
#include "desktop/shell/window_placement.h"

namespace tessary {

/// Brings the window back as it was when it was closed last: its place on the screen, what it showed, and whether the
/// sidebar was folded. The settings are written by `store` only.
class WindowMemory : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk MEMBER desk_ NOTIFY changed)
    Q_PROPERTY(tessary::Navigator* navigator MEMBER navigator_ NOTIFY changed)
    Q_PROPERTY(bool sidebarFolded MEMBER sidebarFolded_ NOTIFY changed)

public:
    /// Shows the window.
    Q_INVOKABLE void restore(QQuickWindow* window);
    Q_INVOKABLE void store();

Q_SIGNALS:
    void changed();

private:
    void restoreSpot();
    [[nodiscard]] WindowPlacement placementNow() const;
    void keep(std::string_view key, const std::string& value);

    Desk* desk_ = nullptr;
    Navigator* navigator_ = nullptr;
    bool sidebarFolded_ = false;
    QQuickWindow* window_ = nullptr;
    /// Before it was maximised. On its way there a window tells its new size before it tells its new state: only what
    /// has lasted for a moment counts.
    std::optional<WindowPlacement> windowed_;
    QTimer settled_;
};

}  // namespace tessary
