#pragma once

#include <cstdint>
#include <string_view>

#include "base/json_record.h"
#include "study/flashcard_store.h"

namespace tessary {

struct NoteDeckChange {
    std::int64_t added = 0;
    std::int64_t updated = 0;    ///< the answer is another now
    std::int64_t unchanged = 0;

    friend bool operator==(const NoteDeckChange&, const NoteDeckChange&) = default;
};

template <>
struct Record<NoteDeckChange> {
    static constexpr auto fields = std::tuple{
        withDefault("added", &NoteDeckChange::added),
        withDefault("updated", &NoteDeckChange::updated),
        withDefault("unchanged", &NoteDeckChange::unchanged),
    };
};

/// Brings a page's deck up to its text: adds the cards of new questions, and gives a card whose question stands the
/// answer of the text. Memories are kept, and no card goes away with its question.
NoteDeckChange updateDeckFromNote(FlashcardStore& store, PageId page, std::string_view text, Date now);

}  // namespace tessary
