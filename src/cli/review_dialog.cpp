#include "cli/review_dialog.h"

#include <algorithm>
#include <chrono>

#include "base/text.h"
#include "cli/identifiers.h"

namespace tessary {
namespace {

/// A longer time is a pause, not thought.
constexpr double kLongestThought = 300;  ///< seconds

double steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::optional<Rating> ratingOf(const Key& key, Rating suggested) {
    if (key.kind == Key::Kind::enter || key.text == " ") return suggested;
    if (key.text.size() != 1 || key.text[0] < '1' || key.text[0] > '4') return std::nullopt;
    return static_cast<Rating>(key.text[0] - '0');
}

}  // namespace

void ReviewDialog::run() {
    do {
        while (const Flashcard* const card = session_.current()) {
            if (oneCard(*card) == Next::quit) return;
        }
    } while (offerUndoAtTheEnd());
}

bool ReviewDialog::offerUndoAtTheEnd() {
    session_.refresh(now());
    if (session_.current() != nullptr) return true;
    if (!session_.canUndo()) return false;
    screen_.notice("That was the last card. u takes the last rating back, any other key ends the review.");
    return keyboard_.next().text == "u" && session_.undo(now());
}

std::string ReviewDialog::placeOf(const Flashcard& card) const {
    const JournalEntry* const page = workspace_.library().entries().find(card.pageID);
    if (page == nullptr) return "";
    const Notebook* const notebook =
        page->notebookID ? workspace_.library().notebooks().find(*page->notebookID) : nullptr;
    return (notebook == nullptr ? "" : onOneLine(notebook->name) + " › ") + titleOf(*page);
}

ReviewDialog::Next ReviewDialog::oneCard(const Flashcard& card) {
    const CardId id = card.id;
    const double startedAt = steadySeconds();
    Rating suggested = Rating::good;
    screen_.question(card, placeOf(card), session_.remaining());
    const Next next = mode_ == AnswerMode::type ? typedAnswer(card, suggested) : askToFlip(id);
    if (next != Next::reveal) return next;
    screen_.answer(*session_.current());
    return askForRating(id, suggested, startedAt);
}

ReviewDialog::Next ReviewDialog::askToFlip(CardId card) {
    screen_.flipPrompt();
    while (true) {
        const Key key = keyboard_.next();
        if (key.kind == Key::Kind::enter || key.text == " ") return Next::reveal;
        const Next next = commonKey(key, card);
        if (next != Next::stay) return next;
    }
}

ReviewDialog::Next ReviewDialog::askForRating(CardId card, Rating suggested, double startedAt) {
    const CardMemory& memory = session_.current()->memory;
    screen_.ratings(previewRatings(memory, now(), desiredRetention(system_.settings)), suggested, now());
    while (true) {
        const Key key = keyboard_.next();
        if (const std::optional<Rating> rating = ratingOf(key, suggested)) {
            rate(*rating, startedAt);
            return Next::goOn;
        }
        const Next next = commonKey(key, card);
        if (next != Next::stay) return next;
    }
}

void ReviewDialog::rate(Rating rating, double startedAt) {
    const double seconds = std::min(steadySeconds() - startedAt, kLongestThought);
    switch (session_.rate(rating, now(), seconds)) {
        case ReviewSession::LeechNotice::suspended: return screen_.notice(kSuspendedAsLeech);
        case ReviewSession::LeechNotice::staysInReview: return screen_.notice(kLeechStaysInReview);
        case ReviewSession::LeechNotice::none: break;
    }
}

ReviewDialog::Next ReviewDialog::commonKey(const Key& key, CardId card) {
    if (key.kind == Key::Kind::end || key.text == "q") return Next::quit;
    if (key.text == "u") {
        if (session_.undo(now())) {
            screen_.notice("Taken back.");
            return Next::goOn;
        }
        screen_.notice("There is nothing to take back.");
    } else if (key.text == "s") {
        session_.suspend(now());
        screen_.notice("Suspended.");
        return Next::goOn;
    } else if (key.text == "f") {
        const bool flagged = !session_.current()->flagged;
        workspace_.cards().setFlagged(card, flagged);
        screen_.notice(flagged ? "Flagged." : "No longer flagged.");
    } else if (key.text == "e") {
        edit(card);
        return Next::goOn;  // to be seen and answered anew
    } else if (key.text == "?") {
        screen_.help();
    }
    return Next::stay;
}

ReviewDialog::Next ReviewDialog::typedAnswer(const Flashcard& card, Rating& suggested) {
    const CardContent content = contentOf(card);
    const std::size_t blanks = content.kind == FlashcardKind::cloze ? clozeTerms(content.front).size() : std::size_t{1};
    std::vector<std::string> typed;
    for (std::size_t i = 0; i < blanks; ++i) {
        const std::string prompt =
            blanks == 1 ? "Your answer (Escape for the keys): " : fmt::format("Blank {} of {}: ", i + 1, blanks);
        bool escaped = false;
        const std::optional<std::string> line = screen_.readLine(keyboard_, prompt, escaped);
        if (!line) return Next::quit;
        if (escaped) return askToFlip(card.id);
        typed.push_back(*line);
    }
    if (const std::optional<AnswerGrade> grade = judged(content, typed)) {
        screen_.grade(*grade);
        suggested = suggestedRating(grade->verdict);
    }
    return Next::reveal;
}

std::optional<AnswerGrade> ReviewDialog::judged(const CardContent& card, const std::vector<std::string>& typed) {
    // The options of a multiple choice leave nothing to judge.
    if (!judge_ || card.kind == FlashcardKind::multipleChoice) {
        return card.kind == FlashcardKind::cloze ? checkBlanks(card, typed, system_.text)
                                                 : checkAnswer(card, typed.front(), system_.text);
    }
    screen_.notice("Checking your answer…");
    const AIResult<AnswerGrade> grade = judge_(card, joined(typed, kClozeTermSeparator));
    if (grade) return *grade;
    screen_.notice(grade.error().text());
    screen_.notice("Couldn't check automatically. Compare with the answer:");
    return std::nullopt;
}

void ReviewDialog::edit(CardId card) {
    CardContent content = contentOf(*workspace_.cards().cards().find(card));
    const auto change = [&](std::string_view name, std::string& text) {
        screen_.notice(fmt::format("{}: {}", name, text));
        bool escaped = false;
        const auto line = screen_.readLine(keyboard_, "New text (Enter keeps it): ", escaped);
        if (line && !escaped && !trimmed(*line).empty()) text = *line;
        return line && !escaped;
    };
    bool goOn = change("Front", content.front);
    for (std::size_t i = 0; goOn && i < content.options.size(); ++i) {
        goOn = change(fmt::format("Option {}", i + 1), content.options[i]);
    }
    if (content.kind == FlashcardKind::cloze) {
        content.back = joined(clozeTerms(content.front), kClozeTermSeparator);
    } else if (goOn && content.kind == FlashcardKind::basic) {
        goOn = change("Back", content.back);
    }
    if (!goOn) return screen_.notice("Nothing was changed.");
    if (const std::optional<std::string> problem = contentProblem(content)) return screen_.notice(*problem);
    workspace_.cards().edit(card, std::move(content));
}

}  // namespace tessary
