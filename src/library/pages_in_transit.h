#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_set>
#include <vector>

#include "library/page.h"

namespace tessary {

/// Pages on their way between the file of the live pages and the file of the trash. Until the file they go to is
/// safely written, the file they come from keeps them, so that they are always in one file at least. Any thread.
class PagesInTransit {
public:
    using Ticket = std::uint64_t;
    template <class T>
    using Snapshot = std::vector<std::shared_ptr<const T>>;

    void leftForTrash(const Snapshot<JournalEntry>& pages) { add(toTrash_, pages); }
    void leftForLive(const Snapshot<TrashedEntry>& pages) { add(toLive_, pages); }

    /// Taken together with a snapshot of a file's content: what is on its way so far is in the snapshot.
    [[nodiscard]] Ticket ticket() const {
        const std::lock_guard lock(mutex_);
        return last_;
    }
    void trashWritten(Ticket ticket) { arrived(toTrash_, ticket); }
    void liveWritten(Ticket ticket) { arrived(toLive_, ticket); }

    /// Adds the pages that the file must still keep.
    void complete(Snapshot<JournalEntry>& live) const {
        append(live, toTrash_, [](const auto& p) { return p.id; });
    }
    void complete(Snapshot<TrashedEntry>& trash) const {
        append(trash, toLive_, [](const auto& p) { return p.entry.id; });
    }

private:
    template <class T>
    struct Traveller {
        Ticket ticket;
        std::shared_ptr<const T> page;
    };

    template <class T>
    void add(std::vector<Traveller<T>>& travellers, const Snapshot<T>& pages) {
        const std::lock_guard lock(mutex_);
        ++last_;
        for (const auto& page : pages) travellers.push_back({last_, page});
    }
    template <class T>
    void arrived(std::vector<Traveller<T>>& travellers, Ticket ticket) {
        const std::lock_guard lock(mutex_);
        std::erase_if(travellers, [&](const Traveller<T>& traveller) { return traveller.ticket <= ticket; });
    }
    /// A page that went more than once comes as it was the last time.
    template <class T, class Identity>
    void append(Snapshot<T>& pages, const std::vector<Traveller<T>>& travellers, Identity identity) const {
        const std::lock_guard lock(mutex_);
        if (travellers.empty()) return;
        std::unordered_set<PageId> present;
        for (const auto& page : pages) present.insert(identity(*page));
        const auto ownCount = static_cast<std::ptrdiff_t>(pages.size());
        for (auto traveller = travellers.rbegin(); traveller != travellers.rend(); ++traveller) {
            if (present.insert(identity(*traveller->page)).second) pages.push_back(traveller->page);
        }
        std::reverse(pages.begin() + ownCount, pages.end());
    }

    mutable std::mutex mutex_;
    Ticket last_ = 0;
    std::vector<Traveller<JournalEntry>> toTrash_;
    std::vector<Traveller<TrashedEntry>> toLive_;
};

}  // namespace tessary
