#include "desktop/shell/window_memory.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

namespace tessary {
namespace {

constexpr const char* kWindowKey = "tessary.window";
constexpr const char* kPlaceKey = "tessary.lastPlace";
constexpr const char* kSidebarKey = "tessary.sidebarFolded";

QList<QRect> freeAreas() {
    QList<QRect> areas;
    for (const QScreen* const screen : QGuiApplication::screens()) areas.append(screen->availableGeometry());
    return areas;
}

/// A Wayland compositor keeps to itself where windows are.
bool tellsPositions() { return !QGuiApplication::platformName().startsWith("wayland"); }

WindowPlacement windowedPlacement(const QWindow& window) {
    return {.size = window.size(),
            .position = tellsPositions() ? std::optional(window.framePosition()) : std::nullopt,
            .isMaximized = false};
}

}  // namespace

void WindowMemory::restore(QQuickWindow* window) {
    window_ = window;
    const Settings& settings = desk_->settings();
    sidebarFolded_ = settings.boolean(kSidebarKey).value_or(false);
    Q_EMIT changed();
    restoreSpot();

    windowed_ = WindowPlacement::parse(toQml(settings.text(kWindowKey).value_or("")));
    const bool maximized = windowed_ && windowed_->isMaximized;
    if (windowed_) {
        windowed_ = windowed_->fittedTo(freeAreas());
        window->resize(windowed_->size.expandedTo(window->minimumSize()));
        if (windowed_->position && tellsPositions()) window->setFramePosition(*windowed_->position);
    }
    settled_.setSingleShot(true);
    settled_.setInterval(std::chrono::milliseconds(300));
    connect(&settled_, &QTimer::timeout, this, [this] {
        if (window_->visibility() == QWindow::Windowed) windowed_ = windowedPlacement(*window_);
    });
    const auto moved = [this] { settled_.start(); };
    connect(window, &QWindow::widthChanged, &settled_, moved);
    connect(window, &QWindow::heightChanged, &settled_, moved);
    connect(window, &QWindow::xChanged, &settled_, moved);
    connect(window, &QWindow::yChanged, &settled_, moved);
    window->setVisibility(maximized ? QWindow::Maximized : QWindow::Windowed);
}

void WindowMemory::restoreSpot() {
    const QStringList parts = toQml(desk_->settings().text(kPlaceKey).value_or("")).split(' ');
    Navigator::Spot spot{.screen = parts.value(0), .place = parts.value(1), .page = parts.value(2)};
    const auto notebook = NotebookId::parse(spot.place.toStdString());
    if (notebook && !desk_->library().notebooks().contains(*notebook)) return;
    if (!desk_->library().entries().contains(fromQml<PageId>(spot.page))) spot.page.clear();
    navigator_->resume(std::move(spot));
}

WindowPlacement WindowMemory::placementNow() const {
    const QWindow::Visibility visibility = window_->visibility();
    WindowPlacement placement =
        visibility == QWindow::Windowed || !windowed_ ? windowedPlacement(*window_) : *windowed_;
    placement.isMaximized = visibility == QWindow::Maximized;
    return placement;
}

void WindowMemory::keep(std::string_view key, const std::string& value) {
    Settings& settings = desk_->settings();
    if (settings.text(key).value_or("") == value) return;
    if (const auto stored = settings.setText(key, value); !stored) desk_->refuse(stored.error());
}

void WindowMemory::store() {
    if (window_ == nullptr) return;
    keep(kWindowKey, placementNow().toText().toStdString());
    const Navigator::Spot spot = navigator_->lasting();
    keep(kPlaceKey, QStringList{spot.screen, spot.place, spot.page}.join(' ').trimmed().toStdString());
    Settings& settings = desk_->settings();
    if (settings.boolean(kSidebarKey).value_or(false) == sidebarFolded_) return;
    if (const auto stored = settings.setBoolean(kSidebarKey, sidebarFolded_); !stored) desk_->refuse(stored.error());
}

}  // namespace tessary
