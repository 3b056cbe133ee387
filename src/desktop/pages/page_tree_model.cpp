#include "desktop/pages/page_tree_model.h"

#include <algorithm>

namespace tessary {
namespace {

QString titleOf(const JournalEntry& page) {
    return page.title.empty() ? PageTreeModel::tr("Untitled") : toQml(page.title);
}

}  // namespace

// ---- what is shown ----------------------------------------------------------------------------------------------

void PageTreeModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    if (desk_ != nullptr) desk_->disconnect(this);
    desk_ = desk;
    if (desk_ != nullptr) {
        connect(desk_, &Desk::libraryChanged, this, &PageTreeModel::followLibrary);
        connect(desk_, &Desk::cardsChanged, this, &PageTreeModel::refresh);
    }
    Q_EMIT deskChanged();
    refresh();
}

void PageTreeModel::setPlace(const QString& place) {
    if (place == query_.place) return;
    query_.place = place;
    Q_EMIT placeChanged();
    refresh();
}

void PageTreeModel::setFilter(const QString& filter) {
    if (filter == query_.filter) return;
    query_.filter = filter;
    Q_EMIT filterChanged();
    refresh();
}

void PageTreeModel::setTag(const QString& tag) {
    if (tag == query_.tag) return;
    query_.tag = tag;
    Q_EMIT tagChanged();
    refresh();
}

int PageTreeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant PageTreeModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const PageTreeRow& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case PageIdRole: return toQml(row.id);
        case TitleRole: return row.title;
        case DepthRole: return row.depth;
        case HasChildrenRole: return row.hasChildren;
        case ExpandedRole: return row.expanded;
        case DueRole: return row.due;
        case PinnedRole: return row.pinned;
        case FavoriteRole: return row.favorite;
        case ArchivedRole: return row.archived;
        case ExpiredRole: return row.expired;
        default: return {};
    }
}

QHash<int, QByteArray> PageTreeModel::roleNames() const {
    return {{PageIdRole, "pageId"},           {TitleRole, "title"},       {DepthRole, "depth"},
            {HasChildrenRole, "hasChildren"}, {ExpandedRole, "expanded"}, {DueRole, "due"},
            {PinnedRole, "pinned"},           {FavoriteRole, "favorite"}, {ArchivedRole, "archived"},
            {ExpiredRole, "expired"}};
}

QString PageTreeModel::headingNow() const {
    if (query_.place == "favorites") return tr("Favorites");
    if (query_.place == "archive") return tr("Archive");
    if (query_.place == "loose") return tr("Loose pages");
    const auto id = query_.notebook();
    const Notebook* const found = id ? desk_->library().notebooks().find(*id) : nullptr;
    return found == nullptr ? tr("All pages") : toQml(found->name);
}

/// Whether the rows show the page as it is now. Order by the last edit: it stands first already.
bool PageTreeModel::showsAlready(PageId id) const {
    const JournalEntry* const now = desk_->library().entries().find(id);
    const auto before = std::ranges::find(shown_, id, [](const auto& page) { return page->id; });
    if (now == nullptr || before == shown_.end() || !isListedAlike(*now, **before)) return false;
    if (desk_->library().sortMode() != EntrySortMode::edited) return true;
    return desk_->library().sortOrder() == SortOrder::newest && !rows_.empty() && rows_.front().id == id;
}

void PageTreeModel::followLibrary() {
    const Desk::Told& told = desk_->told();
    const bool alike = !told.more && pinned_ == desk_->library().pinnedPages() &&
                       std::ranges::all_of(told.pages, [this](PageId page) { return showsAlready(page); });
    if (!alike) refresh();
}

void PageTreeModel::refresh() {
    if (desk_ == nullptr) return;
    shown_ = desk_->library().entries().snapshot();
    pinned_ = desk_->library().pinnedPages();
    replaceRows(pageTreeRows(*desk_, query_));
    heading_ = headingNow();
    const auto id = query_.notebook();
    const Notebook* const found = id ? desk_->library().notebooks().find(*id) : nullptr;
    color_ = found == nullptr ? QString() : "#" + toQml(found->colorHex);
    Q_EMIT refreshed();
}

/// Rows that stay are kept, so that a view keeps its place: only what differs between the common head and tail changes.
void PageTreeModel::replaceRows(std::vector<PageTreeRow> rows) {
    const auto same = [](const PageTreeRow& a, const PageTreeRow& b) { return a.id == b.id; };
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

int PageTreeModel::rowOf(const QString& page) const {
    const PageId id = fromQml<PageId>(page);
    const auto found = std::ranges::find(rows_, id, &PageTreeRow::id);
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

QString PageTreeModel::pageAt(int row) const {
    return row < 0 || row >= rowCount() ? QString() : toQml(rows_[static_cast<std::size_t>(row)].id);
}

const JournalEntry* PageTreeModel::find(const QString& page) const {
    return desk_ == nullptr ? nullptr : desk_->library().entries().find(fromQml<PageId>(page));
}

bool PageTreeModel::exists(const QString& page) const { return find(page) != nullptr; }

void PageTreeModel::toggle(const QString& page) { setExpanded(page, query_.folded.contains(fromQml<PageId>(page))); }

void PageTreeModel::setExpanded(const QString& page, bool expanded) {
    const PageId id = fromQml<PageId>(page);
    if (query_.folded.contains(id) != expanded) return;
    if (expanded) query_.folded.erase(id);
    if (!expanded) query_.folded.insert(id);
    refresh();
}

// ---- what is changed --------------------------------------------------------------------------------------------

QString PageTreeModel::addPage(const QString& parent) {
    JournalEntry page;
    page.notebookID = query_.notebook();
    page.isFavorite = query_.place == "favorites";
    if (!parent.isEmpty()) page.parentID = fromQml<PageId>(parent);
    if (!query_.tag.isEmpty()) page.tags.push_back(query_.tag.toStdString());
    const std::expected<PageId, Refusal> added = desk_->library().addPage(std::move(page));
    if (!added) {
        desk_->refuse(added.error());
        return {};
    }
    query_.folded.erase(fromQml<PageId>(parent));
    setFilter({});
    refresh();
    return toQml(*added);
}

void PageTreeModel::remove(const QString& page) {
    const auto removed = desk_->library().deletePage(fromQml<PageId>(page));
    if (!removed) return desk_->refuse(removed.error());
    const auto subpages = static_cast<int>(removed->size()) - 1;
    const QString sentence = subpages == 0   ? tr("Moved to the Trash")
                             : subpages == 1 ? tr("Moved to the Trash with its subpage")
                                             : tr("Moved to the Trash with its %1 subpages").arg(subpages);
    desk_->offerUndo(sentence, [desk = desk_, id = removed->front()] {
        if (const auto restored = desk->library().restore(id); !restored) desk->refuse(restored.error());
    });
}

void PageTreeModel::setPinned(const QString& page, bool pinned) {
    if (const auto done = desk_->library().setPinned(fromQml<PageId>(page), pinned); !done) desk_->refuse(done.error());
}

template <class Change>
void PageTreeModel::change(const QString& page, Change apply) {
    const JournalEntry* const found = find(page);
    if (found == nullptr) return;
    JournalEntry edited = *found;
    apply(edited);
    if (const auto updated = desk_->library().updatePage(std::move(edited)); !updated) desk_->refuse(updated.error());
}

void PageTreeModel::setFavorite(const QString& page, bool favorite) {
    change(page, [&](JournalEntry& edited) { edited.isFavorite = favorite; });
}

void PageTreeModel::setArchived(const QString& page, bool archived) {
    change(page, [&](JournalEntry& edited) { edited.isArchived = archived; });
}

// ---- moves ------------------------------------------------------------------------------------------------------

bool PageTreeModel::canStandUnder(const QString& page, const QString& parent) const {
    const JournalEntry* const moved = find(page);
    if (moved == nullptr || page == parent) return false;
    const JournalEntry* step = find(parent);
    if (!parent.isEmpty() && step == nullptr) return false;
    for (std::size_t steps = 0; step != nullptr && steps <= desk_->library().entries().size(); ++steps) {
        if (step->id == moved->id) return false;
        step = step->parentID ? desk_->library().entries().find(*step->parentID) : nullptr;
    }
    return true;
}

QString PageTreeModel::whereIs(PageId id) const {
    const JournalStore& library = desk_->library();
    const JournalEntry* const page = library.entries().find(id);
    const JournalEntry* const parent = page->parentID ? library.entries().find(*page->parentID) : nullptr;
    if (parent != nullptr) return tr("Moved under “%1”").arg(titleOf(*parent));
    const Notebook* const notebook = page->notebookID ? library.notebooks().find(*page->notebookID) : nullptr;
    if (notebook == nullptr) return tr("Moved to the loose pages");
    return tr("Moved to the top level of “%1”").arg(toQml(notebook->name));
}

template <class Move>
void PageTreeModel::moveWithUndo(const QString& page, Move move) {
    const JournalEntry* const before = find(page);
    if (before == nullptr) return desk_->refuse("There is no such page.");
    const PageId id = before->id;
    const auto notebook = before->notebookID;
    const auto parent = before->parentID;
    const std::expected<void, Refusal> moved = move(id);
    if (!moved) return desk_->refuse(moved.error());
    const JournalEntry& after = *desk_->library().entries().find(id);
    if (after.notebookID == notebook && after.parentID == parent) return;
    if (after.parentID) query_.folded.erase(*after.parentID);
    desk_->offerUndo(whereIs(id), [desk = desk_, id, notebook, parent] {
        JournalStore& library = desk->library();
        const auto back = parent ? library.setParent(id, parent) : library.movePage(id, notebook);
        if (!back) desk->refuse(back.error());
    });
}

void PageTreeModel::setParentOf(const QString& page, const QString& parent) {
    const auto target = parent.isEmpty() ? std::nullopt : std::optional(fromQml<PageId>(parent));
    moveWithUndo(page, [&](PageId id) { return desk_->library().setParent(id, target); });
}

void PageTreeModel::moveToNotebook(const QString& page, const QString& notebook) {
    const auto target = NotebookId::parse(notebook.toStdString());
    moveWithUndo(page, [&](PageId id) { return desk_->library().movePage(id, target); });
}

void PageTreeModel::moveIn(const QString& page) {
    const int row = rowOf(page);
    if (row < 0) return;
    const int depth = rows_[static_cast<std::size_t>(row)].depth;
    int above = row - 1;
    while (above >= 0 && rows_[static_cast<std::size_t>(above)].depth > depth) --above;
    if (above < 0 || rows_[static_cast<std::size_t>(above)].depth < depth)
        return desk_->refuse(tr("There is no page above it that it could go under.").toStdString());
    setParentOf(page, pageAt(above));
}

void PageTreeModel::moveOut(const QString& page) {
    const JournalEntry* const found = find(page);
    if (found == nullptr) return;
    if (!found->parentID) return desk_->refuse(tr("It is a top-level page already.").toStdString());
    const JournalEntry* const parent = desk_->library().entries().find(*found->parentID);
    setParentOf(page, parent == nullptr || !parent->parentID ? QString() : toQml(*parent->parentID));
}

}  // namespace tessary
