#include "desktop/pages/page_tree_rows.h"

#include <QtCore/QCoreApplication>
#include <algorithm>

#include "library/page_tree.h"

namespace tessary {
namespace {

bool isIn(const JournalEntry& page, const QString& place, const std::optional<NotebookId>& notebook) {
    if (page.isArchived != (place == "archive")) return false;
    if (place == "favorites") return page.isFavorite;
    if (place == "loose") return !page.notebookID;
    return !notebook || page.notebookID == notebook;
}

std::vector<const JournalEntry*> listedPages(Desk& desk, const PageTreeQuery& query) {
    const TextServices& text = desk.ports().text;
    const std::optional<NotebookId> notebook = query.notebook();
    const std::string tag = query.tag.toStdString();
    const std::string wanted = text.folded(query.filter.trimmed().toStdString());
    std::vector<const JournalEntry*> pages;
    for (const JournalEntry& page : desk.library().entries()) {
        if (!isIn(page, query.place, notebook)) continue;
        if (!tag.empty() && std::ranges::find(page.tags, tag) == page.tags.end()) continue;
        if (!wanted.empty() && !desk.folded(page.title).contains(wanted)) continue;
        pages.push_back(&page);
    }
    desk.library().sortForListing(pages, [&](std::string_view title) { return desk.folded(title); });
    return pages;
}

PageTreeRow rowOf(const JournalEntry& page, std::size_t depth) {
    return {.id = page.id,
            .title = page.title.empty() ? QCoreApplication::translate("PageTree", "Untitled") : toQml(page.title),
            .depth = static_cast<int>(depth),
            .hasChildren = false,
            .expanded = true,
            .due = 0,
            .pinned = false,
            .favorite = page.isFavorite,
            .archived = page.isArchived,
            .expired = false};
}

}  // namespace

bool isListedAlike(const JournalEntry& a, const JournalEntry& b) {
    return a.title == b.title && a.date == b.date && a.tags == b.tags && a.isFavorite == b.isFavorite &&
           a.isArchived == b.isArchived && a.notebookID == b.notebookID && a.parentID == b.parentID &&
           a.expirationDate == b.expirationDate;
}

std::vector<PageTreeRow> pageTreeRows(Desk& desk, const PageTreeQuery& query) {
    const auto& due = desk.due();
    const std::vector<PageId> pinnedList = desk.library().pinnedPages();
    const std::unordered_set<PageId> pinned(pinnedList.begin(), pinnedList.end());
    const LocalCalendar& calendar = desk.ports().calendar;
    const Date tomorrow = calendar.addingDays(calendar.startOfDay(desk.now()), 1);
    const std::vector<const JournalEntry*> pages = listedPages(desk, query);
    std::vector<PageTreeRow> rows;
    rows.reserve(pages.size());
    std::optional<std::size_t> foldedDepth;
    for (const auto& [page, depth] : nestedPages(pages)) {
        if (!rows.empty() && depth > static_cast<std::size_t>(rows.back().depth)) rows.back().hasChildren = true;
        if (foldedDepth && depth > *foldedDepth) continue;
        foldedDepth.reset();
        PageTreeRow row = rowOf(*page, depth);
        row.expanded = query.isNarrowed() || !query.folded.contains(page->id);
        if (!row.expanded) foldedDepth = depth;
        if (const auto found = due.find(page->id); found != due.end()) row.due = found->second;
        row.pinned = pinned.contains(page->id);
        row.expired = page->expirationDate && *page->expirationDate < tomorrow;
        rows.push_back(std::move(row));
    }
    return rows;
}

}  // namespace tessary
