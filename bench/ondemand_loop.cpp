#include "ondemand_loop.h"

#include <simdjson.h>

namespace tessary {

namespace {

namespace od = simdjson::ondemand;

Uuid uuidOf(od::value value) { return Uuid::parse(value.get_string()).value(); }
std::string textOf(od::value value) { return std::string(std::string_view(value.get_string())); }
Date dateOf(od::value value) { return Date{value.get_double()}; }

std::vector<std::string> textsOf(od::value value) {
    std::vector<std::string> texts;
    for (od::value text : value.get_array()) texts.push_back(textOf(text));
    return texts;
}

CardMemory memoryOf(od::value value) {
    CardMemory memory;
    for (auto member : value.get_object()) {
        const std::string_view key = member.unescaped_key();
        od::value field = member.value();
        if (key == "phase")
            memory.phase = enumNamed<CardMemory::Phase>(field.get_string()).value();
        else if (key == "stability")
            memory.stability = field.get_double();
        else if (key == "difficulty")
            memory.difficulty = field.get_double();
        else if (key == "due")
            memory.due = dateOf(field);
        else if (key == "lastReview")
            memory.lastReview = dateOf(field);
        else if (key == "reps")
            memory.reps = field.get_int64();
        else if (key == "lapses")
            memory.lapses = field.get_int64();
        else if (key == "step")
            memory.step = field.get_int64();
    }
    return memory;
}

Flashcard cardOf(od::value value) {
    Flashcard card;
    for (auto member : value.get_object()) {
        const std::string_view key = member.unescaped_key();
        od::value field = member.value();
        if (key == "id")
            card.id = CardId{uuidOf(field)};
        else if (key == "pageID")
            card.pageID = PageId{uuidOf(field)};
        else if (key == "kind")
            card.kind = enumNamed<FlashcardKind>(field.get_string()).value();
        else if (key == "front")
            card.front = textOf(field);
        else if (key == "back")
            card.back = textOf(field);
        else if (key == "options")
            card.options = textsOf(field);
        else if (key == "correctIndex")
            card.correctIndex = field.get_int64();
        else if (key == "explanation")
            card.explanation = textOf(field);
        else if (key == "sourcePage")
            card.sourcePage = field.get_int64();
        else if (key == "createdAt")
            card.createdAt = dateOf(field);
        else if (key == "suspended")
            card.suspended = field.get_bool();
        else if (key == "flagged")
            card.flagged = field.get_bool();
        else if (key == "memory")
            card.memory = memoryOf(field);
        else if (key == "failedAt")
            card.failedAt = dateOf(field);
    }
    return card;
}

JournalEntry pageOf(od::value value) {
    JournalEntry page;
    for (auto member : value.get_object()) {
        const std::string_view key = member.unescaped_key();
        od::value field = member.value();
        if (key == "id")
            page.id = PageId{uuidOf(field)};
        else if (key == "title")
            page.title = textOf(field);
        else if (key == "body")
            page.body = textOf(field);
        else if (key == "date")
            page.date = dateOf(field);
        else if (key == "tags")
            page.tags = textsOf(field);
        else if (key == "isFavorite")
            page.isFavorite = field.get_bool();
        else if (key == "type")
            page.type = enumNamed<JournalEntry::EntryType>(field.get_string()).value();
        else if (key == "fontDesign")
            page.fontDesign = textOf(field);
        else if (key == "isArchived")
            page.isArchived = field.get_bool();
        else if (key == "imageFilenames")
            page.imageFilenames = textsOf(field);
        else if (key == "parentID")
            page.parentID = PageId{uuidOf(field)};
        else if (key == "updatedAt")
            page.updatedAt = dateOf(field);
        else if (key == "pdfAttachments")
            page.pdfAttachments = textsOf(field);
        else if (key == "paperStyle")
            page.paperStyle = textOf(field);
    }
    return page;
}

template <class Add>
void forEachCard(const std::string& text, Add add) {
    od::parser parser;
    od::document document = parser.iterate(text.data(), text.size(), text.capacity());
    for (auto card : document["cards"].get_array()) add(cardOf(card.value()));
}

}  // namespace

std::vector<Flashcard> cardsByHand(const std::string& text) {
    std::vector<Flashcard> cards;
    forEachCard(text, [&](Flashcard&& card) { cards.push_back(std::move(card)); });
    return cards;
}

FlashcardFile sharedCardsByHand(const std::string& text) {
    FlashcardFile file;
    forEachCard(text,
                [&](Flashcard&& card) { file.cards.push_back(std::make_shared<const Flashcard>(std::move(card))); });
    return file;
}

std::vector<JournalEntry> pagesByHand(const std::string& text) {
    std::vector<JournalEntry> pages;
    od::parser parser;
    od::document document = parser.iterate(text.data(), text.size(), text.capacity());
    for (auto page : document.get_array()) pages.push_back(pageOf(page.value()));
    return pages;
}

}  // namespace tessary
