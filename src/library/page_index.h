#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>

#include "library/page.h"
#include "library/record_list.h"

namespace tessary {

/// Finds live pages by where they stand and what they say.
class PageIndex {
public:
    /// A notebook's top level, or all pages of one title in one place.
    using Place = std::size_t;

    /// Knows of `known` to begin with, and tells bodies by the `pages` of then, which must outlive the index.
    PageIndex(const RecordList<JournalEntry>& pages, const RecordList<JournalEntry>& known);

    /// Without a notebook: of the loose pages.
    [[nodiscard]] Place topLevel(const std::optional<NotebookId>& notebook);
    [[nodiscard]] Place below(Place place, const std::string& title);

    /// The page that was the first of its title there.
    [[nodiscard]] std::optional<PageId> first(Place place) const;
    [[nodiscard]] std::optional<PageId> withBody(Place place, const std::string& body) const;

    void add(const JournalEntry& page, Place place);

private:
    struct PagesOfPlace {
        PageId first;
        std::unordered_multimap<std::size_t, PageId> byBodyHash;
    };

    Place numberOf(std::string key);
    Place placeOf(const JournalEntry& page, const RecordList<JournalEntry>& known);

    const RecordList<JournalEntry>& pages_;
    std::unordered_map<std::string, Place> numbers_;
    std::unordered_map<PageId, Place> places_;
    std::unordered_map<Place, PagesOfPlace> byPlace_;
};

}  // namespace tessary
