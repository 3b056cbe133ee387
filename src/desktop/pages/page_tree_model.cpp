#include "desktop/pages/page_tree_model.h"

#include <algorithm>

#include "desktop/desk/due_counts.h"
#include "library/page_tree.h"

namespace tessary {
void PageTreeModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    if (desk_ != nullptr) {
        connect(desk_, &Desk::libraryChanged, this, &PageTreeModel::refresh);
        connect(desk_, &Desk::cardsChanged, this, &PageTreeModel::refresh);
    }
    Q_EMIT deskChanged();
    refresh();
}

void PageTreeModel::setPlace(const QString& place) {
    if (place == place_) return;
    place_ = place;
    Q_EMIT placeChanged();
    refresh();
}

void PageTreeModel::setFilter(const QString& filter) {
    if (filter == filter_) return;
    filter_ = filter;
    Q_EMIT filterChanged();
    refresh();
}

int PageTreeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant PageTreeModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case PageIdRole: return toQml(row.id);
        case TitleRole: return row.title;
        case DepthRole: return row.depth;
        case HasChildrenRole: return row.hasChildren;
        case ExpandedRole: return !folded_.contains(toQml(row.id));
        case DueRole: return row.due;
        default: return {};
    }
}

QHash<int, QByteArray> PageTreeModel::roleNames() const {
    return {{PageIdRole, "pageId"},           {TitleRole, "title"},       {DepthRole, "depth"},
            {HasChildrenRole, "hasChildren"}, {ExpandedRole, "expanded"}, {DueRole, "due"}};
}

std::optional<NotebookId> PageTreeModel::notebook() const { return NotebookId::parse(place_.toStdString()); }

QString PageTreeModel::headingNow() const {
    if (place_ == "favorites") return tr("Favorites");
    if (place_ == "archive") return tr("Archive");
    if (place_ == "loose") return tr("Loose pages");
    const auto id = notebook();
    const Notebook* const found = id ? desk_->library().notebooks().find(*id) : nullptr;
    return found == nullptr ? tr("All pages") : toQml(found->name);
}

std::vector<const JournalEntry*> PageTreeModel::pagesHere() const {
    const std::optional<NotebookId> id = notebook();
    std::vector<const JournalEntry*> pages;
    for (const JournalEntry& page : desk_->library().entries()) {
        if (page.isArchived != (place_ == "archive")) continue;
        if (place_ == "favorites" && !page.isFavorite) continue;
        if (place_ == "loose" && page.notebookID) continue;
        if (id && page.notebookID != id) continue;
        pages.push_back(&page);
    }
    return pages;
}

std::vector<PageTreeModel::Row> PageTreeModel::rowsNow() {
    const TextServices& text = desk_->ports().text;
    const auto folded = [&](std::string_view title) { return text.folded(title); };
    std::vector<const JournalEntry*> pages = pagesHere();
    desk_->library().sortForListing(pages, folded);
    const std::string wanted = text.folded(filter_.trimmed().toStdString());
    if (!wanted.empty()) {
        std::erase_if(pages, [&](const JournalEntry* page) { return !folded(page->title).contains(wanted); });
    }
    const auto counts = dueCounts(desk_->cards(), desk_->now());
    std::vector<Row> rows;
    std::optional<std::size_t> foldedDepth;
    for (const auto& [page, depth] : nestedPages(pages)) {
        const auto found = counts.find(page->id);
        const int due = found == counts.end() ? 0 : found->second;
        if (!rows.empty() && depth > static_cast<std::size_t>(rows.back().depth) && !foldedDepth) {
            rows.back().hasChildren = true;
        }
        if (foldedDepth && depth > *foldedDepth) {
            rows.back().hasChildren = true;
            continue;
        }
        foldedDepth.reset();
        if (wanted.empty() && folded_.contains(toQml(page->id))) foldedDepth = depth;
        rows.push_back({.id = page->id,
                        .title = page->title.empty() ? tr("Untitled") : toQml(page->title),
                        .depth = static_cast<int>(depth),
                        .hasChildren = false,
                        .due = due});
    }
    return rows;
}

void PageTreeModel::refresh() {
    if (desk_ == nullptr) return;
    replaceRows(rowsNow());
    heading_ = headingNow();
    Q_EMIT refreshed();
}

/// Rows that stay are kept, so that a view keeps its place: only what differs between the common head and tail changes.
void PageTreeModel::replaceRows(std::vector<Row> rows) {
    const auto same = [](const Row& a, const Row& b) { return a.id == b.id; };
    const auto [oldHead, newHead] = std::ranges::mismatch(rows_, rows, same);
    const auto head = oldHead - rows_.begin();
    auto oldEnd = rows_.end();
    auto newEnd = rows.end();
    while (oldEnd != oldHead && newEnd != newHead && same(*std::prev(oldEnd), *std::prev(newEnd))) {
        --oldEnd;
        --newEnd;
    }
    if (oldEnd != oldHead) {
        beginRemoveRows({}, static_cast<int>(head), static_cast<int>(oldEnd - rows_.begin()) - 1);
        rows_.erase(oldHead, oldEnd);
        endRemoveRows();
    }
    if (newEnd != newHead) {
        beginInsertRows({}, static_cast<int>(head), static_cast<int>(newEnd - rows.begin()) - 1);
        rows_.insert(rows_.begin() + head, newHead, newEnd);
        endInsertRows();
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows_[i] == rows[i]) continue;
        rows_[i] = std::move(rows[i]);
        const QModelIndex changed = index(static_cast<int>(i));
        Q_EMIT dataChanged(changed, changed);
    }
}

void PageTreeModel::toggle(const QString& page) {
    if (!folded_.remove(page)) folded_.insert(page);
    refresh();
    const int row = rowOf(page);
    if (row >= 0) Q_EMIT dataChanged(index(row), index(row), {ExpandedRole});
}

QString PageTreeModel::addPage(const QString& parent) {
    JournalEntry page;
    page.notebookID = notebook();
    page.isFavorite = place_ == "favorites";
    if (!parent.isEmpty()) page.parentID = fromQml<PageId>(parent);
    const std::expected<PageId, Refusal> added = desk_->library().addPage(std::move(page));
    if (!added) {
        desk_->refuse(added.error());
        return {};
    }
    folded_.remove(parent);
    refresh();
    return toQml(*added);
}

void PageTreeModel::remove(const QString& page) {
    if (const auto removed = desk_->library().deletePage(fromQml<PageId>(page)); !removed)
        desk_->refuse(removed.error());
}

void PageTreeModel::setParentOf(const QString& page, const QString& parent) {
    const auto target = parent.isEmpty() ? std::nullopt : std::optional(fromQml<PageId>(parent));
    if (const auto moved = desk_->library().setParent(fromQml<PageId>(page), target); !moved)
        desk_->refuse(moved.error());
}

int PageTreeModel::rowOf(const QString& page) const {
    const PageId id = fromQml<PageId>(page);
    const auto found = std::ranges::find(rows_, id, &Row::id);
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

QString PageTreeModel::pageAt(int row) const {
    return row < 0 || row >= rowCount() ? QString() : toQml(rows_[static_cast<std::size_t>(row)].id);
}

}  // namespace tessary
