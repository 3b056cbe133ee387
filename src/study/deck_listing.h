#pragma once

#include <optional>
#include <stop_token>
#include <string>

#include "platform/text_services.h"
#include "study/review_queue.h"

namespace tessary {

/// Which cards of a deck are asked for, and in which order.
struct DeckQuery {
    enum class State { any, due, fresh, learning, suspended, flagged, leech };
    enum class Order {
        due,         ///< what waits longest first, then new cards, then what comes later; suspended cards last
        newest,
        page,        ///< by its title
        difficulty,  ///< hardest first, cards never rated last
    };

    /// Words that all have to stand somewhere in the card or its page's title, without regard to case and diacritics.
    std::string search;
    std::optional<FlashcardKind> kind;
    State state = State::any;
    Order order = Order::due;

    friend bool operator==(const DeckQuery&, const DeckQuery&) = default;
};

/// A deck as it was at one moment.
struct DeckSource {
    RecordList<Flashcard>::Snapshot cards;
    RecordList<JournalEntry>::Snapshot pages;
    std::optional<ShelfItem> place;  ///< absent: the whole library
    std::int64_t leechLapses = 0;
    Date now;
};

struct DeckListing {
    RecordList<Flashcard>::Snapshot cards;  ///< that were asked for, in order
    FlashcardDeckStats stats;  ///< of the whole deck
};

/// Some tenths of a second for a hundred thousand cards when there is something to search for. Any thread; stopped, it
/// gives what it has.
[[nodiscard]] DeckListing listDeck(const DeckSource& source, const DeckQuery& query, const TextServices& text,
                                   std::stop_token stop = {});

template <>
struct EnumNames<DeckQuery::State> {
    static constexpr auto names = std::array{
        std::pair{DeckQuery::State::any, std::string_view("any")},
        std::pair{DeckQuery::State::due, std::string_view("due")},
        std::pair{DeckQuery::State::fresh, std::string_view("new")},
        std::pair{DeckQuery::State::learning, std::string_view("learning")},
        std::pair{DeckQuery::State::suspended, std::string_view("suspended")},
        std::pair{DeckQuery::State::flagged, std::string_view("flagged")},
        std::pair{DeckQuery::State::leech, std::string_view("leech")},
    };
};

template <>
struct EnumNames<DeckQuery::Order> {
    static constexpr auto names = std::array{
        std::pair{DeckQuery::Order::due, std::string_view("due")},
        std::pair{DeckQuery::Order::newest, std::string_view("newest")},
        std::pair{DeckQuery::Order::page, std::string_view("page")},
        std::pair{DeckQuery::Order::difficulty, std::string_view("difficulty")},
    };
};

}  // namespace tessary
