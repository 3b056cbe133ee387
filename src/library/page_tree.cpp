#include "library/page_tree.h"

#include <unordered_map>
#include <unordered_set>

namespace tessary {

std::vector<PageRow> nestedPages(const std::vector<const JournalEntry*>& pages) {
    std::unordered_set<PageId> listed;
    for (const JournalEntry* const page : pages) listed.insert(page->id);
    std::unordered_map<PageId, std::vector<const JournalEntry*>> children;
    for (const JournalEntry* const page : pages) {
        if (page->parentID && listed.contains(*page->parentID)) children[*page->parentID].push_back(page);
    }
    std::vector<PageRow> ordered;
    std::vector<PageRow> waiting;
    std::unordered_set<const JournalEntry*> placed;
    const auto place = [&](const JournalEntry* root) {
        for (waiting.assign(1, {root, 0}); !waiting.empty();) {
            const PageRow next = waiting.back();
            waiting.pop_back();
            if (!placed.insert(next.page).second) continue;
            ordered.push_back(next);
            const auto& below = children[next.page->id];
            for (auto child = below.rbegin(); child != below.rend(); ++child)
                waiting.push_back({*child, next.depth + 1});
        }
    };
    for (const JournalEntry* const page : pages) {
        if (!page->parentID || !listed.contains(*page->parentID)) place(page);
    }
    for (const JournalEntry* const page : pages) place(page);
    return ordered;
}

}  // namespace tessary
