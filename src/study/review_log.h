#pragma once

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "library/store_services.h"
#include "platform/serial_queue.h"
#include "study/flashcard.h"

namespace tessary {

/// One line of the review log: a rating, or the taking back of one.
struct ReviewLogEntry {
    enum class Kind { rating, undo };

    Kind kind = Kind::rating;
    Date at;                    ///< moment of the rating or of its undoing
    CardId card;
    Rating rating = Rating::again;
    CardMemory::Phase phase = CardMemory::Phase::fresh;  ///< before the rating
    double stabilityBefore = 0;   ///< days
    double stabilityAfter = 0;    ///< days
    double difficultyBefore = 0;
    double difficultyAfter = 0;
    std::optional<double> elapsedDays;  ///< since the last review; absent for a new card
    double intervalSeconds = 0;         ///< until due
    double secondsTaken = 0;            ///< by the learner; 0 when unknown
    std::string scheduler;              ///< the model, as in "FSRS-5"

    friend bool operator==(const ReviewLogEntry&, const ReviewLogEntry&) = default;
};

/// The history of all ratings, one JSON line each, in one file a month: "Reviews/yyyy-MM.jsonl". Only ever appended to,
/// and not read at start: statistics read it when they are asked for.
class ReviewLog {
public:
    /// All arguments outlive the log.
    ReviewLog(std::filesystem::path folder, StoreServices services, SerialQueue& queue);

    /// Queues the append. A failure goes to the console; the rating itself is not lost by it.
    void append(const ReviewLogEntry& entry);

    /// All entries of all months, oldest month first, but none of the months before that of `since`. A line that
    /// cannot be decoded (the torn last line of a crash) is passed over. Any thread; what was appended a moment ago may
    /// not be there yet. Gives what it has when it is stopped.
    [[nodiscard]] std::vector<ReviewLogEntry> read(std::optional<Date> since = {}, std::stop_token stop = {}) const;

private:
    std::filesystem::path folder_;
    StoreServices services_;
    SerialQueue& queue_;
};

template <>
struct EnumNames<ReviewLogEntry::Kind> {
    static constexpr auto names = std::array{
        std::pair{ReviewLogEntry::Kind::rating, std::string_view("rating")},
        std::pair{ReviewLogEntry::Kind::undo, std::string_view("undo")},
    };
};

template <>
struct Record<ReviewLogEntry> {
    static constexpr auto fields = std::tuple{
        tolerant("kind", &ReviewLogEntry::kind, ReviewLogEntry::Kind::rating),
        required("at", &ReviewLogEntry::at),
        required("card", &ReviewLogEntry::card),
        required("rating", &ReviewLogEntry::rating),
        required("phase", &ReviewLogEntry::phase),
        withDefault("stabilityBefore", &ReviewLogEntry::stabilityBefore),
        withDefault("stabilityAfter", &ReviewLogEntry::stabilityAfter),
        withDefault("difficultyBefore", &ReviewLogEntry::difficultyBefore),
        withDefault("difficultyAfter", &ReviewLogEntry::difficultyAfter),
        optional("elapsedDays", &ReviewLogEntry::elapsedDays),
        withDefault("intervalSeconds", &ReviewLogEntry::intervalSeconds),
        withDefault("secondsTaken", &ReviewLogEntry::secondsTaken),
        withDefault("scheduler", &ReviewLogEntry::scheduler),
    };
};

}  // namespace tessary
