#include "study/deck_listing.h"

#include <gtest/gtest.h>

#include "platform/adapters/icu/icu_text_services.h"

namespace tessary {
namespace {

const Date kNow = *parseIso8601("2026-11-21T09:30:00Z");

/// A deck of two pages of a notebook and a loose page, each card named by its front.
class DeckListingTest : public testing::Test {
protected:
    DeckListingTest() {
        source_.now = kNow;
        source_.leechLapses = 8;
        bones_ = addPage("Knochen", notebook_);
        arms_ = addPage("Ärme", notebook_);
        loose_ = addPage("Notizen", std::nullopt);
    }

    PageId addPage(const std::string& title, std::optional<NotebookId> notebook) {
        JournalEntry page;
        page.id = PageId{Uuid{{++made_}}};
        page.title = title;
        page.notebookID = notebook;
        source_.pages.push_back(std::make_shared<const JournalEntry>(page));
        return page.id;
    }
    using Change = std::function<void(Flashcard&)>;
    void add(PageId page, const std::string& front, const Change& change = [](Flashcard&) {}) {
        Flashcard card;
        card.id = CardId{Uuid{{++made_}}};
        card.pageID = page;
        card.front = front;
        card.createdAt = kNow - 100 * kSecondsPerDay + made_;
        card.memory = freshMemory(card.createdAt);
        change(card);
        source_.cards.push_back(std::make_shared<const Flashcard>(card));
    }
    /// Due so many days from now.
    static Change reviewed(double due, double difficulty = 5) {
        return [=](Flashcard& card) {
            card.memory.phase = CardMemory::Phase::review;
            card.memory.due = kNow + due * kSecondsPerDay;
            card.memory.lastReview = kNow - kSecondsPerDay;
            card.memory.stability = 5;
            card.memory.difficulty = difficulty;
        };
    }
    static Change both(const Change& first, const Change& second) {
        return [=](Flashcard& card) {
            first(card);
            second(card);
        };
    }
    std::vector<std::string> fronts(const DeckQuery& query) {
        std::vector<std::string> fronts;
        for (const auto& card : listDeck(source_, query, text_).cards) fronts.push_back(card->front);
        return fronts;
    }
    using Fronts = std::vector<std::string>;

    IcuTextServices text_;
    DeckSource source_;
    NotebookId notebook_{Uuid{{99}}};
    unsigned char made_ = 0;
    PageId bones_;
    PageId arms_;
    PageId loose_;
};

TEST_F(DeckListingTest, APlaceHoldsItsPagesOnly) {
    add(bones_, "femur");
    add(loose_, "note");
    add(PageId{Uuid{{200}}}, "gone");
    EXPECT_EQ(fronts({}), (Fronts{"femur", "note"}));
    source_.place = notebook_;
    EXPECT_EQ(fronts({}), Fronts{"femur"});
    source_.place = LoosePages{};
    EXPECT_EQ(fronts({}), Fronts{"note"});
    EXPECT_EQ(listDeck(source_, {}, text_).stats.total, 1);
}

TEST_F(DeckListingTest, EveryWordStandsSomewhereInTheCardOrItsPage) {
    add(bones_, "Prüfung: femur", [](Flashcard& card) { card.back = "Oberschenkel"; });
    add(arms_, "humerus", [](Flashcard& card) { card.options = {"Elle", "Speiche"}; });
    struct Case {
        std::string search;
        Fronts found;
    };
    const std::vector<Case> cases{
        {"", {"Prüfung: femur", "humerus"}},
        {"  PRUFUNG ", {"Prüfung: femur"}},
        {"oberschenkel femur", {"Prüfung: femur"}},
        {"arme speiche", {"humerus"}},
        {"knochen", {"Prüfung: femur"}},
        {"femur speiche", {}},
    };
    for (const Case& one : cases) EXPECT_EQ(fronts({.search = one.search, .kind = {}}), one.found) << one.search;
}

TEST_F(DeckListingTest, StatesLeaveSuspendedCardsToThemselves) {
    const auto phase = [](CardMemory::Phase now) { return [=](Flashcard& card) { card.memory.phase = now; }; };
    const auto suspended = [](Flashcard& card) { card.suspended = true; };
    add(bones_, "new");
    add(bones_, "new, suspended", suspended);
    add(bones_, "due", reviewed(-1));
    add(bones_, "later", reviewed(1));
    add(bones_, "relearning", both(reviewed(1), phase(CardMemory::Phase::relearning)));
    add(bones_, "flagged", both(reviewed(2), [](Flashcard& card) { card.flagged = true; }));
    add(bones_, "leech", both(both(reviewed(3), [](Flashcard& card) { card.memory.lapses = 8; }), suspended));
    add(bones_, "cloze", both(reviewed(4), [](Flashcard& card) { card.kind = FlashcardKind::cloze; }));
    using State = DeckQuery::State;
    struct Case {
        State state;
        Fronts shown;
    };
    const std::vector<Case> cases{
        {State::due, {"due", "new"}},      {State::fresh, {"new"}},
        {State::learning, {"relearning"}}, {State::suspended, {"new, suspended", "leech"}},
        {State::flagged, {"flagged"}},     {State::leech, {"leech"}},
    };
    for (const Case& one : cases) EXPECT_EQ(fronts({.search = {}, .kind = {}, .state = one.state}), one.shown);
    EXPECT_EQ(fronts({.search = {}, .kind = FlashcardKind::cloze}), Fronts{"cloze"});
    const FlashcardDeckStats stats = listDeck(source_, {.search = "nothing", .kind = {}}, text_).stats;
    EXPECT_EQ(stats.total, 8);
    EXPECT_EQ(stats.due, 2);
    EXPECT_EQ(stats.leeches, 1);
    source_.leechLapses = 0;
    EXPECT_EQ(fronts({.search = {}, .kind = {}, .state = State::leech}), Fronts{});
}

TEST_F(DeckListingTest, OrdersAreWhole) {
    add(bones_, "soon", reviewed(1, 3));
    add(arms_, "new");
    add(bones_, "overdue", reviewed(-9, 7));
    add(loose_, "suspended", both(reviewed(-20, 9), [](Flashcard& card) { card.suspended = true; }));
    add(arms_, "due", reviewed(-1, 3));
    using Order = DeckQuery::Order;
    struct Case {
        Order order;
        Fronts shown;
    };
    const std::vector<Case> cases{
        {Order::due, {"overdue", "due", "new", "soon", "suspended"}},
        {Order::newest, {"due", "suspended", "overdue", "new", "soon"}},
        {Order::page, {"new", "due", "soon", "overdue", "suspended"}},
        {Order::difficulty, {"suspended", "overdue", "soon", "due", "new"}},
    };
    for (const Case& one : cases) {
        DeckQuery query;
        query.order = one.order;
        EXPECT_EQ(fronts(query), one.shown) << enumName(one.order);
    }
}

}  // namespace
}  // namespace tessary
