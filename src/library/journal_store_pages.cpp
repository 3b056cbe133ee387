#include <unordered_map>
#include <unordered_set>

#include "library/journal_store.h"
#include "library/journal_store_tree.h"

namespace tessary {

namespace {

constexpr double kDeletionStep = 0.001;  // seconds between two deletions of the same moment

constexpr std::string_view kNoSuchPage = "There is no such page.";
constexpr std::string_view kNoSuchNotebook = "There is no such notebook.";

std::unexpected<Refusal> refuse(std::string_view reason) { return std::unexpected(Refusal(reason)); }

}  // namespace

std::optional<std::string> JournalStore::refusalOf(const JournalEntry& page) const {
    if (entries_.contains(page.id) || trash_.contains(page.id)) return "The page is already in the library.";
    if (page.parentID && !entries_.contains(*page.parentID)) return "There is no such parent page.";
    if (!page.parentID && page.notebookID && !notebooks_.contains(*page.notebookID)) {
        return std::string(kNoSuchNotebook);
    }
    return std::nullopt;
}

std::expected<PageId, Refusal> JournalStore::addPage(JournalEntry page) {
    if (page.id == PageId{}) page.id = PageId{services_.ids.next()};
    if (page.date == Date{}) page.date = services_.clock.now();
    if (const std::optional<std::string> refusal = refusalOf(page)) return refuse(*refusal);
    if (page.parentID) page.notebookID = entries_.find(*page.parentID)->notebookID;
    const PageId id = page.id;
    entries_.append(std::move(page));
    pagesChanged({id});
    return id;
}

std::expected<void, Refusal> JournalStore::updatePage(JournalEntry page) {
    const JournalEntry* const present = entries_.find(page.id);
    if (present == nullptr) return refuse(kNoSuchPage);
    page.notebookID = present->notebookID;
    page.parentID = present->parentID;
    page.updatedAt = services_.clock.now();
    const PageId id = page.id;
    entries_.replace(std::move(page));
    pagesChanged({id});
    return {};
}

void JournalStore::setNotebook(const std::vector<PageId>& pages, std::optional<NotebookId> notebook) {
    for (const PageId& id : pages) {
        JournalEntry page = *entries_.find(id);
        page.notebookID = notebook;
        entries_.replace(std::move(page));
    }
}

std::expected<void, Refusal> JournalStore::movePage(PageId id, std::optional<NotebookId> notebook) {
    if (!entries_.contains(id)) return refuse(kNoSuchPage);
    if (notebook && !notebooks_.contains(*notebook)) return refuse(kNoSuchNotebook);
    std::vector<PageId> moved = withDescendants(entries_, {id}, pageItself);
    JournalEntry page = *entries_.find(id);
    page.parentID.reset();
    entries_.replace(std::move(page));
    setNotebook(moved, notebook);
    pagesChanged(std::move(moved));
    return {};
}

std::expected<void, Refusal> JournalStore::setParent(PageId id, std::optional<PageId> parent) {
    if (!entries_.contains(id)) return refuse(kNoSuchPage);
    std::vector<PageId> moved = withDescendants(entries_, {id}, pageItself);
    if (parent && !entries_.contains(*parent)) return refuse("There is no such parent page.");
    if (parent && std::ranges::find(moved, *parent) != moved.end()) {
        return refuse("A page cannot stand inside itself.");
    }
    JournalEntry page = *entries_.find(id);
    page.parentID = parent;
    entries_.replace(std::move(page));
    if (parent) setNotebook(moved, entries_.find(*parent)->notebookID);
    pagesChanged(std::move(moved));
    return {};
}

std::vector<PageId> JournalStore::subpagesOf(PageId page) const {
    std::vector<PageId> pages = withDescendants(entries_, {page}, pageItself);
    pages.erase(pages.begin());
    return pages;
}

Date JournalStore::freshDeletionDate() const {
    std::unordered_set<Date> taken;
    for (const TrashedEntry& trashed : trash_) taken.insert(trashed.deletedAt);
    Date date = services_.clock.now();
    while (taken.contains(date)) date = date + kDeletionStep;
    return date;
}

void JournalStore::moveToTrash(const std::vector<PageId>& pages) {
    const Date deletedAt = freshDeletionDate();
    std::unordered_map<PageId, std::size_t> rank;
    for (const PageId& id : pages) rank.try_emplace(id, rank.size());
    auto removed = entries_.extractIf([&](const JournalEntry& page) { return rank.contains(page.id); });
    std::ranges::stable_sort(removed, {}, [&](const auto& page) { return rank.at(page->id); });
    for (const auto& page : removed) trash_.append({.entry = *page, .deletedAt = deletedAt});
    inTransit_->leftForTrash(removed);
    saveTrash();
    entriesSave_.schedule();
    LibraryChange change;
    change.pages = pages;
    change.trash = true;
    changed.emit(change);
}

std::expected<std::vector<PageId>, Refusal> JournalStore::deletePage(PageId page) {
    if (!entries_.contains(page)) return refuse(kNoSuchPage);
    std::vector<PageId> pages = withDescendants(entries_, {page}, pageItself);
    moveToTrash(pages);
    return pages;
}

RecordList<TrashedEntry>::Snapshot JournalStore::trashedTogether(const TrashedEntry& root) const {
    RecordList<TrashedEntry>::Snapshot group;
    std::unordered_map<PageId, RecordList<TrashedEntry>::Pointer> byId;
    for (const auto& trashed : trash_.snapshot()) {
        if (trashed->deletedAt != root.deletedAt) continue;
        group.push_back(trashed);
        byId.try_emplace(trashed->entry.id, trashed);
    }
    RecordList<TrashedEntry>::Snapshot together;
    const auto pageOf = [](const auto& trashed) -> const JournalEntry& { return trashed->entry; };
    for (const PageId& id : withDescendants(group, {root.entry.id}, pageOf)) {
        if (!entries_.contains(id)) together.push_back(byId.at(id));
    }
    return together;
}

std::expected<std::vector<PageId>, Refusal> JournalStore::restore(PageId id) {
    const TrashedEntry* latest = nullptr;
    for (const TrashedEntry& trashed : trash_) {
        if (trashed.entry.id == id && (latest == nullptr || latest->deletedAt < trashed.deletedAt)) latest = &trashed;
    }
    if (latest == nullptr) return refuse("There is no such page in the trash.");
    if (entries_.contains(id)) return refuse("The page is already in the library.");
    const RecordList<TrashedEntry>::Snapshot group = trashedTogether(*latest);
    std::unordered_set<const TrashedEntry*> leavingRecords;
    for (const auto& trashed : group) leavingRecords.insert(trashed.get());
    trash_.extractIf([&](const TrashedEntry& trashed) { return leavingRecords.contains(&trashed); });
    inTransit_->leftForLive(group);

    std::vector<PageId> restored;
    for (const auto& trashed : group) {
        JournalEntry page = trashed->entry;
        if (page.notebookID && !notebooks_.contains(*page.notebookID)) page.notebookID.reset();
        const JournalEntry* const parent = page.parentID ? entries_.find(*page.parentID) : nullptr;
        if (parent == nullptr) page.parentID.reset();
        if (parent != nullptr) page.notebookID = parent->notebookID;
        restored.push_back(page.id);
        entries_.append(std::move(page));
    }
    entriesSave_.schedule();
    entriesSave_.flush();
    saveTrash([this] { return !entriesFile_.lastSaveFailed(); });
    LibraryChange change;
    change.pages = restored;
    change.trash = true;
    changed.emit(change);
    return restored;
}

std::size_t JournalStore::emptyTrash() {
    const auto dropped = trash_.extractIf([](const TrashedEntry&) { return true; });
    if (dropped.empty()) return 0;
    entriesSave_.flush();
    saveTrashAndRemoveMedia(dropped);
    LibraryChange change;
    change.trash = true;
    changed.emit(change);
    return dropped.size();
}

int JournalStore::daysLeft(const TrashedEntry& trashed) const {
    const Date now = services_.clock.now();
    const Date end = services_.calendar.addingDays(trashed.deletedAt, kTrashDays);
    int days = 1;
    while (days < kTrashDays && services_.calendar.addingDays(now, days) < end) ++days;
    return days;
}

}  // namespace tessary
