#pragma once

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/json_record.h"

namespace tessary {

/// Where a record keeps its identity.
template <class T>
[[nodiscard]] const auto& identityOf(const T& record) {
    return record.id;
}

/// The records of one file, in order, found by identity. A record is never changed in place but replaced, so that a
/// snapshot costs one pointer per record and stays as it was while another thread writes it to disk.
///
/// A file may hold one identity twice; both records are kept, and `find` gives the first.
template <class T>
class RecordList {
public:
    using Identity = std::remove_cvref_t<decltype(identityOf(std::declval<const T&>()))>;
    using Pointer = std::shared_ptr<const T>;
    using Snapshot = std::vector<Pointer>;

    RecordList() = default;
    explicit RecordList(Snapshot records) : records_(std::move(records)) { reindex(0); }

    [[nodiscard]] std::size_t size() const { return records_.size(); }
    [[nodiscard]] bool empty() const { return records_.empty(); }
    [[nodiscard]] const T& operator[](std::size_t index) const { return *records_[index]; }
    /// Cheap to copy, safe to read on any thread.
    [[nodiscard]] const Snapshot& snapshot() const { return records_; }

    [[nodiscard]] bool contains(const Identity& id) const { return index_.contains(id); }
    /// Null when there is none. Valid until the list changes.
    [[nodiscard]] const T* find(const Identity& id) const {
        const auto found = index_.find(id);
        return found == index_.end() ? nullptr : records_[found->second].get();
    }
    /// Null when there is none. Keeps the record as it is now.
    [[nodiscard]] Pointer share(const Identity& id) const {
        const auto found = index_.find(id);
        return found == index_.end() ? nullptr : records_[found->second];
    }

    void append(T record) {
        index_.try_emplace(identityOf(record), records_.size());
        records_.push_back(std::make_shared<const T>(std::move(record)));
    }

    /// Replaces the record of the same identity; false when there is none.
    bool replace(T record) {
        const auto found = index_.find(identityOf(record));
        if (found == index_.end()) return false;
        records_[found->second] = std::make_shared<const T>(std::move(record));
        return true;
    }

    /// Removes what `matches`, and gives it back in order.
    template <class Predicate>
    Snapshot extractIf(Predicate matches) {
        const auto firstRemoved =
            std::ranges::find_if(records_, [&](const Pointer& record) { return matches(*record); });
        if (firstRemoved == records_.end()) return {};
        const auto from = static_cast<std::size_t>(firstRemoved - records_.begin());
        const auto tail = std::stable_partition(firstRemoved, records_.end(),
                                                [&](const Pointer& record) { return !matches(*record); });
        Snapshot removed(std::make_move_iterator(tail), std::make_move_iterator(records_.end()));
        records_.erase(tail, records_.end());
        for (const Pointer& record : removed) {
            const auto entry = index_.find(identityOf(*record));
            if (entry != index_.end() && entry->second >= from) index_.erase(entry);
        }
        reindex(from);
        return removed;
    }

    /// Iterates over the records as `const T&`.
    class Iterator {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = T;
        Iterator() = default;
        explicit Iterator(typename Snapshot::const_iterator at) : at_(at) {}
        const T& operator*() const { return **at_; }
        const T* operator->() const { return at_->get(); }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++at_;
            return before;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        typename Snapshot::const_iterator at_;
    };
    [[nodiscard]] Iterator begin() const { return Iterator(records_.begin()); }
    [[nodiscard]] Iterator end() const { return Iterator(records_.end()); }

private:
    /// Records from `from` on have moved; an identity that already stands before `from` keeps its place.
    void reindex(std::size_t from) {
        index_.reserve(records_.size());
        for (std::size_t i = records_.size(); i-- > from;) {
            const auto [entry, inserted] = index_.try_emplace(identityOf(*records_[i]), i);
            if (!inserted && entry->second >= from) entry->second = i;
        }
    }

    Snapshot records_;
    std::unordered_map<Identity, std::size_t> index_;
};

// A list of shared records has the JSON form of a list of records.
template <HasRecord T>
void readValue(JsonValue json, const ReadContext& context, std::vector<std::shared_ptr<const T>>& values) {
    values.reserve(json.elementCount());
    json.forEachElement(
        [&](JsonValue element) { values.push_back(std::make_shared<const T>(readRecord<T>(element, context))); });
}

template <HasRecord T>
void writeValue(JsonWriter& writer, const std::vector<std::shared_ptr<const T>>& values) {
    writeList(writer, values, [&writer](const std::shared_ptr<const T>& value) { writeRecord(writer, *value); });
}

}  // namespace tessary
