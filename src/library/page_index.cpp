#include "library/page_index.h"

#include <functional>
#include <utility>
#include <vector>

namespace tessary {

PageIndex::PageIndex(const RecordList<JournalEntry>& pages, const RecordList<JournalEntry>& known) : pages_(pages) {
    for (const JournalEntry& page : known) add(page, placeOf(page, known));
}

PageIndex::Place PageIndex::topLevel(const std::optional<NotebookId>& notebook) {
    return numberOf(notebook ? notebook->toString() : std::string());
}

PageIndex::Place PageIndex::below(Place place, const std::string& title) {
    return numberOf(std::to_string(place) + ' ' + title);
}

std::optional<PageId> PageIndex::first(Place place) const {
    const auto found = byPlace_.find(place);
    return found == byPlace_.end() ? std::nullopt : std::optional(found->second.first);
}

std::optional<PageId> PageIndex::withBody(Place place, const std::string& body) const {
    const auto found = byPlace_.find(place);
    if (found == byPlace_.end()) return std::nullopt;
    const auto [begin, end] = found->second.byBodyHash.equal_range(std::hash<std::string>{}(body));
    for (auto each = begin; each != end; ++each) {
        const JournalEntry* const page = pages_.find(each->second);
        if (page != nullptr && page->body == body) return page->id;
    }
    return std::nullopt;
}

void PageIndex::add(const JournalEntry& page, Place place) {
    PagesOfPlace& there = byPlace_.try_emplace(place, PagesOfPlace{page.id, {}}).first->second;
    there.byBodyHash.emplace(std::hash<std::string>{}(page.body), page.id);
}

PageIndex::Place PageIndex::numberOf(std::string key) {
    return numbers_.try_emplace(std::move(key), numbers_.size()).first->second;
}

/// Where parents form a loop, the page asked for first counts as a top-level page.
PageIndex::Place PageIndex::placeOf(const JournalEntry& page, const RecordList<JournalEntry>& known) {
    std::vector<const JournalEntry*> unplaced;
    const JournalEntry* next = &page;
    while (next != nullptr && places_.try_emplace(next->id, topLevel(next->notebookID)).second) {
        unplaced.push_back(next);
        next = next->parentID ? known.find(*next->parentID) : nullptr;
    }
    if (unplaced.empty()) return places_.at(page.id);
    Place place = next == nullptr ? topLevel(unplaced.back()->notebookID) : places_.at(next->id);
    for (; !unplaced.empty(); unplaced.pop_back()) {
        place = below(place, unplaced.back()->title);
        places_[unplaced.back()->id] = place;
    }
    return place;
}

}  // namespace tessary
