#pragma once

#include <QtQuick/QQuickItem>

#include "desktop/desk_rig.h"
#include "support/loopback_server.h"

namespace tessary {

/// What a test of a screen stands on: a desk on a library of its own, and a way to find what a user would see or hear.
class LibraryRig : public QObject {
    Q_OBJECT
    Q_PROPERTY(tessary::Desk* desk READ desk NOTIFY opened)

public:
    [[nodiscard]] Desk* desk() const { return rig_ ? &rig_->desk : nullptr; }

    /// An empty library; the one before is gone.
    Q_INVOKABLE void open();
    /// Gives the identity of the welcome notebook.
    Q_INVOKABLE QString welcome();
    /// Newer than those that are there.
    Q_INVOKABLE QString addNotebook(const QString& name);
    /// A loose page when `notebook` is empty.
    Q_INVOKABLE QString addPage(const QString& notebook, const QString& title, const QString& body);
    Q_INVOKABLE QString addSubpage(const QString& page, const QString& title);
    Q_INVOKABLE QString addCard(const QString& page, const QString& front, const QString& back);
    Q_INVOKABLE QString addCloze(const QString& page, const QString& sentence);
    Q_INVOKABLE QString addChoice(const QString& page, const QString& front, const QStringList& options, int correct);
    Q_INVOKABLE void addExam(const QString& notebook, const QString& title, int daysAhead);
    Q_INVOKABLE void trash(const QString& page);
    /// "front", "reps", "suspended", "flagged" and "dueIn" (seconds).
    Q_INVOKABLE QVariantMap card(const QString& card) const;
    /// "color", "material" and "pinned" of the notebook of this name; empty when there is none.
    Q_INVOKABLE QVariantMap notebook(const QString& name) const;
    /// Rates a card, 1 to 4, so many days ago.
    Q_INVOKABLE void rate(const QString& card, int rating, double daysAgo);
    Q_INVOKABLE int pages() const { return static_cast<int>(rig_->library().entries().size()); }
    Q_INVOKABLE int notebooks() const { return static_cast<int>(rig_->library().notebooks().size()); }
    Q_INVOKABLE int cards() const { return static_cast<int>(rig_->cards().cards().size()); }
    Q_INVOKABLE QString titleOf(const QString& page) const;
    Q_INVOKABLE QString bodyOf(const QString& page) const;
    /// Empty for a top-level page.
    Q_INVOKABLE QString parentOf(const QString& page) const;
    Q_INVOKABLE QStringList tagsOf(const QString& page) const;
    Q_INVOKABLE bool isPinned(const QString& page) const;
    /// "RRGGBB"; empty for none.
    Q_INVOKABLE QString tagColor(const QString& tag) const;
    Q_INVOKABLE int trashed() const { return static_cast<int>(rig_->library().trash().size()); }
    /// Of the settings; empty when it is not set.
    Q_INVOKABLE QString setting(const QString& key) const;
    Q_INVOKABLE void set(const QString& key, const QString& value);

    /// From now on a provider on this computer writes a basic card for each of these fronts, in one answer.
    Q_INVOKABLE void serveCards(const QStringList& fronts);
    /// From now on a provider on this computer fails.
    Q_INVOKABLE void serveFailures();

    /// The first visible item in the window of `item` whose accessible name is `name`; null when there is none.
    Q_INVOKABLE QQuickItem* find(QQuickItem* item, const QString& name) const;

    /// What an assistive tool says of an item beyond its name.
    Q_INVOKABLE QString describe(QQuickItem* item) const;

    /// Whether the clock of a companion runs, and how often it was painted.
    Q_INVOKABLE bool moves(QQuickItem* companion) const;
    Q_INVOKABLE int paints(QQuickItem* companion) const;
    /// Lets a companion live through so many seconds at once.
    Q_INVOKABLE void pass(QQuickItem* companion, double seconds);

Q_SIGNALS:
    void opened();

private:
    void serve(LoopbackServer::Answer answer);

    LoopbackServer server_;
    std::unique_ptr<DeskRig<>> rig_;
};

}  // namespace tessary
