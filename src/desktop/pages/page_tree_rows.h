#pragma once

#include <QtCore/QString>
#include <unordered_set>

#include "desktop/desk/desk.h"

namespace tessary {

/// What of the library a tree shows.
struct PageTreeQuery {
    QString place = "all";           ///< "all", "favorites", "archive", "loose", or a notebook's identity
    QString filter;                  ///< only pages whose title holds it; then nothing is folded
    QString tag;                     ///< only pages with it; then nothing is folded
    std::unordered_set<PageId> folded;

    [[nodiscard]] std::optional<NotebookId> notebook() const { return NotebookId::parse(place.toStdString()); }
    [[nodiscard]] bool isNarrowed() const { return !filter.trimmed().isEmpty() || !tag.isEmpty(); }
};

/// One line of the tree.
struct PageTreeRow {
    PageId id;
    QString title;
    int depth = 0;
    bool hasChildren = false;
    bool expanded = true;
    int due = 0;
    bool pinned = false;
    bool favorite = false;
    bool archived = false;
    bool expired = false;  ///< today or before

    friend bool operator==(const PageTreeRow&, const PageTreeRow&) = default;
};

/// Whether what a tree shows is the same, but for the order by the last edit.
[[nodiscard]] bool isListedAlike(const JournalEntry& a, const JournalEntry& b);

[[nodiscard]] std::vector<PageTreeRow> pageTreeRows(Desk& desk, const PageTreeQuery& query);

}  // namespace tessary
