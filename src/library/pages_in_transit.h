#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <mutex>
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
    void complete(Snapshot<JournalEntry>& live) const { append(live, toTrash_, [](const auto& p) { return p.id; }); }
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
    template <class T, class Identity>
    void append(Snapshot<T>& pages, const std::vector<Traveller<T>>& travellers, Identity identity) const {
        const std::lock_guard lock(mutex_);
        for (const Traveller<T>& traveller : travellers) {
            const auto same = [&](const auto& page) { return identity(*page) == identity(*traveller.page); };
            if (std::ranges::none_of(pages, same)) pages.push_back(traveller.page);
        }
    }

    mutable std::mutex mutex_;
    Ticket last_ = 0;
    std::vector<Traveller<JournalEntry>> toTrash_;
    std::vector<Traveller<TrashedEntry>> toLive_;
};

}  // namespace tessary
