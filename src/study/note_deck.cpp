#include "study/note_deck.h"

#include <string>
#include <unordered_map>

#include "study/note_cards.h"

namespace tessary {

NoteDeckChange updateDeckFromNote(FlashcardStore& store, PageId page, std::string_view text, Date now) {
    std::unordered_map<std::string, CardId> present;
    for (const Flashcard& card : store.cards()) {
        if (card.pageID == page) present.try_emplace(questionKey(contentOf(card)), card.id);
    }
    NoteDeckChange change;
    std::vector<CardContent> fresh;
    for (CardContent& found : cardsInText(text)) {
        const auto standing = present.find(questionKey(found));
        if (standing == present.end()) {
            fresh.push_back(std::move(found));
            continue;
        }
        CardContent content = contentOf(*store.cards().find(standing->second));
        if (content.front == found.front && content.back == found.back) {
            ++change.unchanged;
            continue;
        }
        content.front = std::move(found.front);
        content.back = std::move(found.back);
        store.edit(standing->second, std::move(content));
        ++change.updated;
    }
    change.added = static_cast<std::int64_t>(fresh.size());
    store.addCards(page, std::move(fresh), now);
    return change;
}

}  // namespace tessary
