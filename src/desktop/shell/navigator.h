#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QObject>
#include <vector>

namespace tessary {

/// Where the user is in the window, and the way back.
class Navigator : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// "today", "shelf", "pages", "study", "deck", "trash", "settings" or "review".
    Q_PROPERTY(QString screen READ screen NOTIFY moved)
    /// Of "pages": "all", "favorites", "archive", "loose", or a notebook's identity; of "settings": the pane, empty for
    /// the first.
    Q_PROPERTY(QString place READ place NOTIFY moved)
    /// Of "deck" and "review" whose cards: "all", "loose", or a notebook's identity; may be empty, which means all.
    Q_PROPERTY(QString deck READ deck NOTIFY moved)
    /// Of "pages" the page that is open, of "review" the page whose cards are asked; may be empty.
    Q_PROPERTY(QString page READ page NOTIFY moved)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY moved)

public:
    [[nodiscard]] QString screen() const { return spot_.screen; }
    [[nodiscard]] QString place() const { return placeIsDeck() ? QString() : spot_.place; }
    [[nodiscard]] QString deck() const { return placeIsDeck() ? spot_.place : QString(); }
    [[nodiscard]] QString page() const { return spot_.page; }
    [[nodiscard]] bool canGoBack() const { return !earlier_.empty(); }

    struct Spot {
        QString screen;
        QString place;
        QString page;

        friend bool operator==(const Spot&, const Spot&) = default;
    };

    /// What to come back to another day: where the user is, or was before a review.
    [[nodiscard]] Spot lasting() const;
    /// Begins there, with no way back. A screen that is not one to come back to changes nothing.
    void resume(Spot spot);

    Q_INVOKABLE void openToday() { go({.screen = "today", .place = {}, .page = {}}); }
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
    Q_INVOKABLE void openDeck(const QString& place) { go({.screen = "deck", .place = place, .page = {}}); }
    Q_INVOKABLE void openReviewOf(const QString& place) { go({.screen = "review", .place = place, .page = {}}); }
    Q_INVOKABLE void goBack();

Q_SIGNALS:
    void moved();

private:
    [[nodiscard]] bool placeIsDeck() const { return spot_.screen == "deck" || spot_.screen == "review"; }
    void go(Spot spot);

    Spot spot_{.screen = "today", .place = {}, .page = {}};
    std::vector<Spot> earlier_;
};

}  // namespace tessary
