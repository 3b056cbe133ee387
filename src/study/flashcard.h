#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "base/json_record.h"
#include "base/uuid.h"

namespace tessary {

enum class FlashcardKind { basic, cloze, multipleChoice };

/// How well a card was remembered. The numbers are those of the scheduler's formulas.
enum class Rating { again = 1, hard = 2, good = 3, easy = 4 };

/// The scheduling state of one card. The member defaults are those of a new card.
struct CardMemory {
    enum class Phase { fresh, learning, review, relearning };  // "new" in files; a keyword here

    Phase phase = Phase::fresh;
    double stability = 0;            ///< days; unset while fresh
    double difficulty = 0;           ///< 1 to 10; unset while fresh
    Date due;
    std::optional<Date> lastReview;  ///< absent until the first rating
    std::int64_t reps = 0;           ///< ratings so far
    std::int64_t lapses = 0;         ///< times forgotten in the review phase
    std::int64_t step = 0;           ///< index of the current learning or relearning step

    friend bool operator==(const CardMemory&, const CardMemory&) = default;
};

/// A new card's memory, due at once.
[[nodiscard]] inline CardMemory freshMemory(Date now) { return CardMemory{.due = now, .lastReview = std::nullopt}; }

/// What the learner sees of a card.
struct CardContent {
    FlashcardKind kind = FlashcardKind::basic;
    std::string front;  ///< the question; of a cloze the sentence with its blanks in double braces
    std::string back;
    std::vector<std::string> options;           ///< of a multipleChoice card, else empty
    std::optional<std::int64_t> correctIndex;   ///< into `options`
    std::optional<std::string> explanation;
    std::optional<std::int64_t> sourcePage;     ///< page of the source document, from 1

    friend bool operator==(const CardContent&, const CardContent&) = default;
};

/// One card.
struct Flashcard {
    CardId id;
    PageId pageID;
    FlashcardKind kind = FlashcardKind::basic;
    std::string front;
    std::string back;
    std::vector<std::string> options;
    std::optional<std::int64_t> correctIndex;
    std::optional<std::string> explanation;
    std::optional<std::int64_t> sourcePage;
    Date createdAt;
    bool suspended = false;  ///< left out of reviews
    bool flagged = false;    ///< marked by the learner
    CardMemory memory;
    std::optional<Date> failedAt;  ///< when it was last forgotten

    friend bool operator==(const Flashcard&, const Flashcard&) = default;
};

[[nodiscard]] CardContent contentOf(const Flashcard& card);
void setContent(Flashcard& card, CardContent content);

/// What is wrong with a card's content, as a sentence for the user; absent when nothing is. A front is needed; a cloze
/// needs a blank; a multiple choice needs two options and a right one among them.
[[nodiscard]] std::optional<std::string> contentProblem(const CardContent& content);

/// The hidden terms of a cloze sentence, in order: the runs between "{{" and "}}".
[[nodiscard]] std::vector<std::string> clozeTerms(std::string_view front);
/// The sentence with each blank replaced by `blank`.
[[nodiscard]] std::string clozeWithBlanks(std::string_view front, std::string_view blank);
/// The sentence with the terms shown and the braces gone.
[[nodiscard]] std::string clozeRevealed(std::string_view front);
/// Joins the hidden terms in the back of a cloze card.
inline constexpr std::string_view kClozeTermSeparator = " · ";

template <>
struct EnumNames<FlashcardKind> {
    static constexpr auto names = std::array{
        std::pair{FlashcardKind::basic, std::string_view("basic")},
        std::pair{FlashcardKind::cloze, std::string_view("cloze")},
        std::pair{FlashcardKind::multipleChoice, std::string_view("multipleChoice")},
    };
};

template <>
struct EnumNames<Rating> {
    static constexpr auto names = std::array{
        std::pair{Rating::again, std::string_view("again")},
        std::pair{Rating::hard, std::string_view("hard")},
        std::pair{Rating::good, std::string_view("good")},
        std::pair{Rating::easy, std::string_view("easy")},
    };
};

template <>
struct EnumNames<CardMemory::Phase> {
    static constexpr auto names = std::array{
        std::pair{CardMemory::Phase::fresh, std::string_view("new")},
        std::pair{CardMemory::Phase::learning, std::string_view("learning")},
        std::pair{CardMemory::Phase::review, std::string_view("review")},
        std::pair{CardMemory::Phase::relearning, std::string_view("relearning")},
    };
};

// Few keys are required: what an older or another program leaves out must not cost a whole file.
template <>
struct Record<CardMemory> {
    static constexpr auto fields = std::tuple{
        required("phase", &CardMemory::phase),
        withDefault("stability", &CardMemory::stability),
        withDefault("difficulty", &CardMemory::difficulty),
        withComputedDefault("due", &CardMemory::due, [](const ReadContext& context) { return context.now; }),
        optional("lastReview", &CardMemory::lastReview),
        withDefault("reps", &CardMemory::reps, 0, kNotNegative),
        withDefault("lapses", &CardMemory::lapses, 0, kNotNegative),
        withDefault("step", &CardMemory::step, 0, kNotNegative),
    };
};

template <>
struct Record<Flashcard> {
    static constexpr auto fields = std::tuple{
        required("id", &Flashcard::id),
        required("pageID", &Flashcard::pageID),
        tolerant("kind", &Flashcard::kind, FlashcardKind::basic),
        required("front", &Flashcard::front),
        required("back", &Flashcard::back),
        withDefault("options", &Flashcard::options),
        optional("correctIndex", &Flashcard::correctIndex),
        optional("explanation", &Flashcard::explanation),
        optional("sourcePage", &Flashcard::sourcePage),
        withComputedDefault("createdAt", &Flashcard::createdAt, [](const ReadContext& context) { return context.now; }),
        withDefault("suspended", &Flashcard::suspended),
        withDefault("flagged", &Flashcard::flagged),
        withComputedDefault("memory", &Flashcard::memory,
                            [](const ReadContext& context) { return freshMemory(context.now); }),
        optional("failedAt", &Flashcard::failedAt),
    };
};

}  // namespace tessary
