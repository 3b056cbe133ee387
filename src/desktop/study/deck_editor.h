#pragma once

#include <QtCore/QUrl>
#include <QtCore/QVariantMap>

#include "desktop/study/deck_model.h"

namespace tessary {

/// Writes the cards of a deck: one at a time from a form, or many from a file and to one.
class DeckEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::DeckModel* deck MEMBER deck_ NOTIFY deckChanged)
    /// Whether a file is being read or written.
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)

public:
    using QObject::QObject;

    [[nodiscard]] bool busy() const { return busy_; }

    /// What a form starts with: maps of "card", "pageId", "kind", "front", "back", "options", "correctIndex" and
    /// "explanation"; with an empty identity those of a new card on the deck's first page.
    Q_INVOKABLE [[nodiscard]] QVariantMap draft(const QString& card) const;
    /// What is wrong with a form, as a sentence; empty when nothing is.
    Q_INVOKABLE [[nodiscard]] QString problemOf(const QVariantMap& draft) const;
    Q_INVOKABLE void save(const QVariantMap& draft);
    /// Where a card may stand: maps of "pageId" and "title", by title.
    Q_INVOKABLE [[nodiscard]] QVariantList pages() const;

    /// Of the deck; only what is picked when anything is. Local files, as URLs.
    Q_INVOKABLE void exportTo(const QUrl& file);
    /// The cards of a deck file, onto one page.
    Q_INVOKABLE void importFrom(const QUrl& file, const QString& page);

Q_SIGNALS:
    void deckChanged();
    void busyChanged();
    /// What came of a file.
    void told(const QString& sentence);

private:
    [[nodiscard]] Desk& desk() const { return *deck_->desk(); }
    [[nodiscard]] CardContent contentOfDraft(const QVariantMap& draft) const;
    void begin();
    void end(const QString& sentence);

    DeckModel* deck_ = nullptr;
    bool busy_ = false;
    std::unique_ptr<Job> work_;  // last: its thread reports to all of this
};

}  // namespace tessary
