#pragma once

#include <cstddef>
#include <vector>

#include "library/page.h"

namespace tessary {

/// A page of a list and how deep it stands under other pages of the list.
struct PageRow {
    const JournalEntry* page = nullptr;
    std::size_t depth = 0;
};

/// Subpages after their parents, in the order of the list; a page whose parent is not in the list stands for itself,
/// and so do pages in a loop of parents. Each page comes once.
[[nodiscard]] std::vector<PageRow> nestedPages(const std::vector<const JournalEntry*>& pages);

}  // namespace tessary
