#pragma once

#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "library/page.h"

namespace tessary {

/// The `pageOf` of a list of pages.
[[nodiscard]] inline const JournalEntry& pageItself(const JournalEntry& page) { return page; }

/// `roots` and behind them all that lies under them among `pages`, each of it once and parents before children. Ends in
/// spite of loops of `parentID`. `pageOf` gives the page of an element of `pages`.
template <class Pages, class PageOf>
[[nodiscard]] std::vector<PageId> withDescendants(const Pages& pages, std::vector<PageId> roots, PageOf pageOf) {
    std::unordered_map<PageId, std::vector<PageId>> children;
    for (const auto& each : pages) {
        const JournalEntry& page = pageOf(each);
        if (page.parentID) children[*page.parentID].push_back(page.id);
    }
    std::unordered_set<PageId> seen(roots.begin(), roots.end());
    std::vector<PageId> found = std::move(roots);
    for (std::size_t next = 0; next < found.size(); ++next) {
        const auto under = children.find(found[next]);
        if (under == children.end()) continue;
        for (const PageId& child : under->second) {
            if (seen.insert(child).second) found.push_back(child);
        }
    }
    return found;
}

}  // namespace tessary
