#include "study/study_statistics.h"

#include <algorithm>
#include <chrono>
#include <unordered_map>

#include "study/scheduler.h"

namespace tessary {
namespace {

constexpr int kDaysOfWeek = 7;
constexpr std::size_t kLooksForStop = 1024;  // cards between two

ShelfItem placeOf(const JournalEntry& page) { return page.notebookID ? ShelfItem(*page.notebookID) : LoosePages{}; }

/// The first moments of `count` days on end, and of the day after them. Counted day by day, since not each has 24
/// hours.
std::vector<Date> dayStarts(const LocalCalendar& calendar, Date first, std::size_t count) {
    std::vector<Date> starts;
    for (std::size_t i = 0; i <= count; ++i) {
        starts.push_back(calendar.startOfDay(calendar.addingDays(first, static_cast<int>(i))));
    }
    return starts;
}

/// Of the day that holds `moment`; -1 before the first, the number of days after the last.
std::ptrdiff_t dayOf(const std::vector<Date>& starts, Date moment) {
    return std::ranges::upper_bound(starts, moment) - starts.begin() - 1;
}

/// From Monday on.
int weekdayOf(CivilDay day) {
    const std::chrono::sys_days days = std::chrono::year(day.year) / day.month / day.day;
    return static_cast<int>(std::chrono::weekday(days).iso_encoding()) - 1;
}

/// Each page's deck, by a number.
class Decks {
public:
    Decks(const RecordList<JournalEntry>::Snapshot& pages, const DeckTally& empty) {
        for (const auto& page : pages) {
            const ShelfItem place = placeOf(*page);
            const NotebookId* const notebook = std::get_if<NotebookId>(&place);
            const auto [found, isNew] =
                numbers_.try_emplace(notebook == nullptr ? NotebookId{} : *notebook, decks_.size());
            if (isNew) decks_.emplace_back(place, empty);
            byPage_.emplace(page->id, found->second);
        }
    }
    /// Null for a page that is not there.
    DeckTally* of(PageId page) {
        const auto found = byPage_.find(page);
        return found == byPage_.end() ? nullptr : &decks_[found->second].second;
    }
    std::vector<std::pair<ShelfItem, FlashcardDeckStats>> stats() const {
        std::vector<std::pair<ShelfItem, FlashcardDeckStats>> stats;
        for (const auto& [place, tally] : decks_) {
            if (const FlashcardDeckStats deck = tally.stats(); deck.total > 0) stats.emplace_back(place, deck);
        }
        return stats;
    }

private:
    std::unordered_map<NotebookId, std::size_t> numbers_;  // all zero: the loose pages
    std::unordered_map<PageId, std::size_t> byPage_;
    std::vector<std::pair<ShelfItem, DeckTally>> decks_;
};

/// The ratings that stand, last first: an undoing takes back the last rating before it of its card.
template <class Use>
void forEachRating(std::span<const ReviewLogEntry> log, Use use) {
    std::unordered_map<CardId, int> takenBack;
    for (std::size_t i = log.size(); i-- > 0;) {
        const ReviewLogEntry& entry = log[i];
        if (entry.kind == ReviewLogEntry::Kind::undo) {
            ++takenBack[entry.card];
            continue;
        }
        const auto found = takenBack.empty() ? takenBack.end() : takenBack.find(entry.card);
        if (found == takenBack.end()) {
            use(entry);
        } else if (--found->second == 0) {
            takenBack.erase(found);
        }
    }
}

void countStreaks(ReviewHistory& history) {
    std::int64_t run = 0;
    for (auto day = history.days.begin(); day != history.days.end(); ++day) {
        const bool isToday = day + 1 == history.days.end();
        if (day->reviews > 0) {
            ++run;
            ++history.activeDays;
            history.reviews += day->reviews;
        } else if (!isToday) {
            run = 0;
        }
        history.longestStreak = std::max(history.longestStreak, run);
    }
    history.streak = run;
}

}  // namespace

StudyStatistics studyStatistics(const StudyMaterial& material, const LocalCalendar& calendar, Date now,
                                std::size_t forecastDays, std::stop_token stop) {
    StudyStatistics statistics;
    const std::vector<Date> starts = dayStarts(calendar, now, forecastDays);
    statistics.forecast.resize(forecastDays);
    DeckTally total(now, material.leechLapses);
    Decks decks(material.pages, total);
    std::size_t looked = 0;
    for (const auto& card : material.cards) {
        if (looked++ % kLooksForStop == 0 && stop.stop_requested()) break;
        DeckTally* const deck = decks.of(card->pageID);
        if (deck == nullptr) continue;
        deck->add(*card);
        total.add(*card);
        if (!card->memory.lastReview) continue;
        const double recall = retrievability(card->memory, now) * StudyStatistics::kRecallSteps;
        ++statistics.recall[std::min(static_cast<std::size_t>(recall), StudyStatistics::kRecallSteps - 1)];
        if (card->suspended) continue;
        const std::ptrdiff_t day = dayOf(starts, card->memory.due);
        if (day < 0) ++statistics.overdue;
        if (day < static_cast<std::ptrdiff_t>(forecastDays)) {
            ++statistics.forecast[static_cast<std::size_t>(std::max<std::ptrdiff_t>(day, 0))];
        }
    }
    statistics.total = total.stats();
    statistics.decks = decks.stats();
    return statistics;
}

Date historyStart(const LocalCalendar& calendar, Date now) {
    const int daysBefore = (ReviewHistory::kWeeks - 1) * kDaysOfWeek + weekdayOf(calendar.civilTime(now).day);
    return calendar.startOfDay(calendar.addingDays(calendar.startOfDay(now), -daysBefore));
}

ReviewHistory reviewHistory(std::span<const ReviewLogEntry> log, const LocalCalendar& calendar, Date now) {
    ReviewHistory history;
    const auto days = static_cast<std::size_t>((ReviewHistory::kWeeks - 1) * kDaysOfWeek +
                                               weekdayOf(calendar.civilTime(now).day) + 1);
    const std::vector<Date> starts = dayStarts(calendar, historyStart(calendar, now), days);
    for (std::size_t i = 0; i < days; ++i) history.days.push_back({.day = calendar.civilTime(starts[i]).day});
    const auto firstTested = static_cast<std::ptrdiff_t>(days) - ReviewHistory::kRetentionDays;
    forEachRating(log, [&](const ReviewLogEntry& rating) {
        const std::ptrdiff_t day = dayOf(starts, rating.at);
        if (day < 0 || day >= static_cast<std::ptrdiff_t>(days)) return;
        ++history.days[static_cast<std::size_t>(day)].reviews;
        if (day < firstTested || rating.phase != CardMemory::Phase::review) return;
        ++history.tested;
        if (rating.rating != Rating::again) ++history.remembered;
    });
    countStreaks(history);
    return history;
}

}  // namespace tessary
