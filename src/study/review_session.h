#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string_view>
#include <vector>

#include "study/review_queue.h"

namespace tessary {

inline constexpr std::string_view kSuspendedAsLeech = "Forgotten too often, so it's suspended";
inline constexpr std::string_view kLeechStaysInReview = "Forgotten many times. Consider rewriting it.";

/// One sitting: which card comes next, what was rated, and the way back. Main thread only; front ends draw it.
///
/// The current card stays until it is rated or suspended. After it come, in this order: a learning card that is due,
/// the head of the main queue, and, when nothing else is left, a learning card due within `kLearnAhead`.
class ReviewSession {
public:
    /// All arguments but `scope` outlive the session.
    ReviewSession(FlashcardStore& cards, const JournalStore& library, const Settings& settings,
                  const LocalCalendar& calendar, ReviewScope scope, Date now);
    ReviewSession(const ReviewSession&) = delete;
    ReviewSession& operator=(const ReviewSession&) = delete;

    static constexpr double kLearnAhead = 20 * kSecondsPerMinute;  ///< seconds

    /// The card to answer; null when the session is over, or the card was removed and `refresh` has not been called.
    /// Valid until the store changes.
    [[nodiscard]] const Flashcard* current() const;

    struct Remaining {
        std::int64_t fresh = 0;
        std::int64_t learning = 0;  ///< that will come back in this session
        std::int64_t review = 0;
    };
    /// Cards still to come, the current one included, as of the last call that told the time.
    [[nodiscard]] Remaining remaining() const;

    enum class LeechNotice { none, suspended, staysInReview };
    /// Rates the current card and goes on; `secondsTaken` is the learner's time. There must be a current card.
    LeechNotice rate(Rating rating, Date now, double secondsTaken);
    /// Takes the current card out of reviews and goes on.
    void suspend(Date now);
    /// Takes back the last rating or suspension of this session that still can be; its card is the current one again,
    /// and the one that was current comes next. A card whose page has gone is taken back too, but not offered. Ratings
    /// made elsewhere stay. False when there is nothing left to take back.
    bool undo(Date now);
    [[nodiscard]] bool canUndo() const { return !steps_.empty(); }

    /// To be called when cards or pages may have changed from outside, and when time has passed while `current` is
    /// null: drops what is no longer offered and looks for a current card again. New material is not taken in. May be
    /// called by an observer of the store.
    void refresh(Date now);

    struct Summary {
        std::int64_t cards = 0;  ///< different cards rated
        std::int64_t ratings = 0;
        std::int64_t remembered = 0;  ///< ratings other than Again
        double seconds = 0;  ///< of the learner, over all ratings
        std::optional<Date> nextDue;  ///< of the scope; absent when nothing is left to fall due
    };
    /// Ratings that were taken back do not count.
    [[nodiscard]] Summary summary(Date now) const;

private:
    /// Something that can be taken back. Without a rating it is a suspension.
    struct Step {
        CardId card;
        std::optional<RatingNumber> rating;
    };
    struct Given {
        RatingNumber number{};
        CardId card;
        Rating rating = Rating::again;
        double seconds = 0;
    };
    enum class LearningDue { now, soon };

    [[nodiscard]] bool isOffered(const Flashcard* card) const;
    [[nodiscard]] bool isOfMain(const Flashcard* card) const;
    [[nodiscard]] bool comesBackSoon(const Flashcard& card) const;
    [[nodiscard]] bool canTakeBack(const Step& step) const;
    void takeBack(const Step& step);
    void dropLostSteps();

    void tell(Date now);
    void advance();
    [[nodiscard]] std::optional<CardId> takeForced();
    [[nodiscard]] std::optional<CardId> takeFromMain();
    [[nodiscard]] std::optional<CardId> learningCard(LearningDue due) const;
    void keepIfLearning(CardId card);
    void putBack(CardId card);

    FlashcardStore& cards_;
    const JournalStore& library_;
    const Settings& settings_;
    const LocalCalendar& calendar_;
    const ReviewScope scope_;
    const Date start_;
    ScopePages pages_;
    Date now_;
    Date latest_;  ///< of all the times told: a clock set back must not put cards out of reach
    std::optional<CardId> current_;
    std::optional<CardId> forced_;  ///< was current when a step was taken back
    std::deque<CardId> main_;
    std::vector<CardId> learning_;  ///< every card that was in learning at the start or came to it; phases may change
    std::vector<Step> steps_;
    std::vector<Given> given_;
    bool changing_ = false;  ///< by this session, whose observers of the store may call `refresh` meanwhile
};

}  // namespace tessary
