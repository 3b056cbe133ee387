#include "study/deck_listing.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>

#include "base/text.h"

namespace tessary {
namespace {

using Phase = CardMemory::Phase;
using Pointer = RecordList<Flashcard>::Pointer;

constexpr std::size_t kLooksForStop = 128;  // cards between two

bool isInState(const Flashcard& card, DeckQuery::State state, const DeckSource& source) {
    const Phase phase = card.memory.phase;
    switch (state) {
        case DeckQuery::State::any: return true;
        case DeckQuery::State::due: return !card.suspended && card.memory.due <= source.now;
        case DeckQuery::State::fresh: return !card.suspended && phase == Phase::fresh;
        case DeckQuery::State::learning:
            return !card.suspended && (phase == Phase::learning || phase == Phase::relearning);
        case DeckQuery::State::suspended: return card.suspended;
        case DeckQuery::State::flagged: return card.flagged;
        case DeckQuery::State::leech: return source.leechLapses > 0 && card.memory.lapses >= source.leechLapses;
    }
    return false;
}

struct DeckPage {
    std::string title;  ///< folded
};

class Search {
public:
    Search(const std::string& query, const TextServices& text) : text_(text) {
        const std::string folded = text.folded(query);
        for (const std::string_view word : split(folded, ' ')) {
            if (!trimmed(word).empty()) words_.emplace_back(trimmed(word));
        }
    }
    bool admits(const Flashcard& card, const DeckPage& page) const {
        if (words_.empty()) return true;
        std::string all = card.front + '\n' + card.back;
        for (const std::string& option : card.options) all += '\n' + option;
        all = text_.folded(all) + '\n' + page.title;
        return std::ranges::all_of(words_,
                                   [&](const std::string& word) { return all.find(word) != std::string::npos; });
    }

private:
    const TextServices& text_;
    std::vector<std::string> words_;
};

struct Candidate {
    Pointer card;
    int turn = 0;
    const DeckPage* page = nullptr;
    std::size_t position = 0;  ///< in the store, which settles what is equal
};

/// What waits comes before new cards, and these before what comes later.
int turnOf(const Flashcard& card, Date now) {
    if (card.suspended) return 3;
    if (card.memory.phase == Phase::fresh) return 1;
    return card.memory.due <= now ? 0 : 2;
}

bool isBefore(const Candidate& a, const Candidate& b, DeckQuery::Order order) {
    const Flashcard& x = *a.card;
    const Flashcard& y = *b.card;
    switch (order) {
        case DeckQuery::Order::due:
            return std::tie(a.turn, x.memory.due, a.position) < std::tie(b.turn, y.memory.due, b.position);
        case DeckQuery::Order::newest: return std::tie(y.createdAt, a.position) < std::tie(x.createdAt, b.position);
        case DeckQuery::Order::page:
            return std::tie(a.page->title, x.pageID.uuid.bytes, a.position) <
                   std::tie(b.page->title, y.pageID.uuid.bytes, b.position);
        case DeckQuery::Order::difficulty: {
            const bool xFresh = x.memory.phase == Phase::fresh;
            const bool yFresh = y.memory.phase == Phase::fresh;
            return std::tie(xFresh, y.memory.difficulty, a.position) <
                   std::tie(yFresh, x.memory.difficulty, b.position);
        }
    }
    return false;
}

/// The pages of the deck.
std::unordered_map<PageId, DeckPage> pagesOf(const DeckSource& source, const TextServices& text) {
    std::unordered_map<PageId, DeckPage> pages;
    for (const auto& page : source.pages) {
        if (source.place && !standsIn(*page, *source.place)) continue;
        pages.try_emplace(page->id, DeckPage{.title = text.folded(page->title)});
    }
    return pages;
}

}  // namespace

DeckListing listDeck(const DeckSource& source, const DeckQuery& query, const TextServices& text, std::stop_token stop) {
    const std::unordered_map<PageId, DeckPage> pages = pagesOf(source, text);
    const Search search(query.search, text);
    DeckTally tally(source.now, source.leechLapses);
    std::vector<Candidate> candidates;
    for (std::size_t i = 0; i < source.cards.size(); ++i) {
        if (i % kLooksForStop == 0 && stop.stop_requested()) break;
        const Pointer& card = source.cards[i];
        const auto page = pages.find(card->pageID);
        if (page == pages.end()) continue;
        tally.add(*card);
        if (query.kind && card->kind != *query.kind) continue;
        if (!isInState(*card, query.state, source) || !search.admits(*card, page->second)) continue;
        candidates.push_back({.card = card, .turn = turnOf(*card, source.now), .page = &page->second, .position = i});
    }
    std::ranges::sort(candidates, [&](const Candidate& a, const Candidate& b) { return isBefore(a, b, query.order); });
    DeckListing listing{.cards = {}, .stats = tally.stats()};
    listing.cards.reserve(candidates.size());
    for (Candidate& candidate : candidates) listing.cards.push_back(std::move(candidate.card));
    return listing;
}

}  // namespace tessary
