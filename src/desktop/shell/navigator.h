#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QObject>
#include <vector>

namespace tessary {

/// Where the user is in the window, and the way back.
class Navigator : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// "shelf", "pages", "study", "trash", "settings" or "review".
    Q_PROPERTY(QString screen READ screen NOTIFY moved)
    /// Of "pages": "all", "favorites", "archive", "loose", or a notebook's identity; of "settings": the pane, empty for
    /// the first.
    Q_PROPERTY(QString place READ place NOTIFY moved)
    /// Of "pages" the page that is open, of "review" the page whose cards are asked; may be empty.
    Q_PROPERTY(QString page READ page NOTIFY moved)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY moved)

public:
    [[nodiscard]] QString screen() const { return spot_.screen; }
    [[nodiscard]] QString place() const { return spot_.place; }
    [[nodiscard]] QString page() const { return spot_.page; }
    [[nodiscard]] bool canGoBack() const { return !earlier_.empty(); }

    Q_INVOKABLE void openShelf() { go({.screen = "shelf", .place = {}, .page = {}}); }
    Q_INVOKABLE void openStudy() { go({.screen = "study", .place = {}, .page = {}}); }
    Q_INVOKABLE void openTrash() { go({.screen = "trash", .place = {}, .page = {}}); }
    /// "ai", "flashcards", "general", "backup", "library" or "about".
    Q_INVOKABLE void openSettings(const QString& pane = {}) { go({.screen = "settings", .place = pane, .page = {}}); }
    Q_INVOKABLE void openPlace(const QString& place) { go({.screen = "pages", .place = place, .page = {}}); }
    /// A page of the place that is open, which is no step of its own.
    Q_INVOKABLE void showPage(const QString& page);
    Q_INVOKABLE void openPage(const QString& place, const QString& page) {
        go({.screen = "pages", .place = place, .page = page});
    }
    /// All cards when `page` is empty.
    Q_INVOKABLE void openReview(const QString& page) { go({.screen = "review", .place = {}, .page = page}); }
    Q_INVOKABLE void goBack();

Q_SIGNALS:
    void moved();

private:
    struct Spot {
        QString screen;
        QString place;
        QString page;

        friend bool operator==(const Spot&, const Spot&) = default;
    };

    void go(Spot spot);

    Spot spot_{.screen = "shelf", .place = {}, .page = {}};
    std::vector<Spot> earlier_;
};

}  // namespace tessary
