#pragma once

#include <optional>
#include <string>
#include <vector>

#include "study/study_statistics.h"

namespace tessary {

/// Where the library stands today. Pure functions over snapshots, for a thread of their own.
struct TodaySummary {
    struct Deck {
        std::optional<NotebookId> notebook;  ///< absent: the loose pages
        std::string name;
        std::string color;  ///< hex of the notebook
        std::int64_t due = 0;
    };
    struct Page {
        PageId id;
        std::optional<NotebookId> in;
        std::string title;
        std::string notebook;
        std::string color;  ///< hex; empty for a loose page
        double recall = 0;  ///< mean chance of its reviewed cards, 0 to 1
        Date edited;
    };
    struct ExamAhead {
        std::string title;
        std::string notebook;
        std::string color;
        Date date;
        int days = 0;  ///< local days until it
    };

    std::int64_t cards = 0;
    std::int64_t due = 0;
    std::vector<Deck> decks;    ///< with cards due, most first
    std::vector<Page> weakest;  ///< least recalled first
    std::vector<Page> recent;   ///< edited last first
    std::vector<ExamAhead> exams;
    /// The last seven local days, today last: whether there was a review.
    std::vector<ReviewHistory::Day> week;
    std::int64_t streak = 0;
    std::int64_t longestStreak = 0;
    bool studiedToday = false;
    /// Mean time of an answer lately; 0 when too little is known.
    double secondsPerCard = 0;
};

struct TodayMaterial {
    StudyMaterial study;
    RecordList<Notebook>::Snapshot notebooks;
    RecordList<Exam>::Snapshot exams;
    std::vector<ReviewLogEntry> log;
};

/// At most four pages of each kind, and three exams. Archived pages are not told of.
[[nodiscard]] TodaySummary todaySummary(const TodayMaterial& material, const LocalCalendar& calendar, Date now,
                                        std::stop_token stop);

}  // namespace tessary
