#include "desktop/today/today_summary.h"

#include <algorithm>
#include <chrono>
#include <unordered_map>

#include "study/scheduler.h"

namespace tessary {
namespace {

constexpr std::size_t kPagesShown = 4;
constexpr std::size_t kExamsShown = 3;
constexpr std::size_t kDaysShown = 7;
constexpr std::size_t kLooksForStop = 1024;  // cards between two
constexpr double kLately = 30 * kSecondsPerDay;
/// Answers that tell how long one takes; fewer don't.
constexpr std::size_t kAnswersWanted = 20;

std::chrono::sys_days daysOf(CivilDay day) { return std::chrono::year(day.year) / day.month / day.day; }

struct NotebookLook {
    std::string name = "Loose pages";
    std::string color;
};

/// What the pages and decks are called by.
class Names {
public:
    explicit Names(const RecordList<Notebook>::Snapshot& notebooks) {
        for (const auto& notebook : notebooks) looks_[notebook->id] = {notebook->name, notebook->colorHex};
    }
    [[nodiscard]] const NotebookLook& of(std::optional<NotebookId> notebook) const {
        const auto found = notebook ? looks_.find(*notebook) : looks_.end();
        return found == looks_.end() ? loose_ : found->second;
    }

private:
    std::unordered_map<NotebookId, NotebookLook> looks_;
    NotebookLook loose_;
};

struct Recall {
    double sum = 0;
    int cards = 0;
};

std::unordered_map<PageId, Recall> recallByPage(const RecordList<Flashcard>::Snapshot& cards, Date now,
                                                const std::stop_token& stop) {
    std::unordered_map<PageId, Recall> pages;
    std::size_t looked = 0;
    for (const auto& card : cards) {
        if (looked++ % kLooksForStop == 0 && stop.stop_requested()) break;
        if (card->suspended || !card->memory.lastReview) continue;
        Recall& page = pages[card->pageID];
        page.sum += retrievability(card->memory, now);
        ++page.cards;
    }
    return pages;
}

TodaySummary::Page shownPage(const JournalEntry& page, const Names& names, double recall) {
    const NotebookLook& notebook = names.of(page.notebookID);
    return {.id = page.id,
            .in = page.notebookID,
            .title = page.title,
            .notebook = notebook.name,
            .color = notebook.color,
            .recall = recall,
            .edited = lastEdited(page)};
}

/// The first few by `key`, in its order.
template <class Item, class Key>
void keepFirst(std::vector<Item>& items, std::size_t count, Key key) {
    const auto kept = static_cast<std::ptrdiff_t>(std::min(count, items.size()));
    std::ranges::partial_sort(items, items.begin() + kept, {}, key);
    items.resize(static_cast<std::size_t>(kept));
}

void tellPages(TodaySummary& summary, const TodayMaterial& material, const Names& names, Date now,
               const std::stop_token& stop) {
    const auto recall = recallByPage(material.study.cards, now, stop);
    std::vector<std::pair<double, const JournalEntry*>> weakest;
    std::vector<const JournalEntry*> recent;
    for (const auto& page : material.study.pages) {
        if (page->isArchived) continue;
        recent.push_back(page.get());
        const auto found = recall.find(page->id);
        if (found != recall.end()) weakest.emplace_back(found->second.sum / found->second.cards, page.get());
    }
    keepFirst(weakest, kPagesShown, [](const auto& each) { return each.first; });
    keepFirst(recent, kPagesShown, [](const JournalEntry* page) { return -lastEdited(*page).seconds; });
    for (const auto& [mean, page] : weakest) summary.weakest.push_back(shownPage(*page, names, mean));
    for (const JournalEntry* page : recent) summary.recent.push_back(shownPage(*page, names, 0));
}

void tellDecks(TodaySummary& summary, const StudyStatistics& statistics, const Names& names) {
    summary.cards = statistics.total.total;
    summary.due = statistics.total.due;
    for (const auto& [place, stats] : statistics.decks) {
        if (stats.due == 0) continue;
        const NotebookId* const id = std::get_if<NotebookId>(&place);
        const auto notebook = id == nullptr ? std::nullopt : std::optional(*id);
        const NotebookLook& look = names.of(notebook);
        summary.decks.push_back({.notebook = notebook, .name = look.name, .color = look.color, .due = stats.due});
    }
    std::ranges::sort(summary.decks,
                      [](const auto& a, const auto& b) { return a.due != b.due ? a.due > b.due : a.name < b.name; });
}

void tellExams(TodaySummary& summary, const TodayMaterial& material, const Names& names, const LocalCalendar& calendar,
               Date now) {
    const auto today = daysOf(calendar.civilTime(now).day);
    for (const auto& exam : material.exams) {
        const auto days = static_cast<int>((daysOf(calendar.civilTime(exam->date).day) - today).count());
        if (days < 0) continue;
        const NotebookLook& notebook = names.of(exam->notebookID);
        summary.exams.push_back({.title = exam->title,
                                 .notebook = notebook.name,
                                 .color = notebook.color,
                                 .date = exam->date,
                                 .days = days});
    }
    keepFirst(summary.exams, kExamsShown, [](const auto& exam) { return exam.date; });
}

void tellHistory(TodaySummary& summary, const TodayMaterial& material, const LocalCalendar& calendar, Date now) {
    const ReviewHistory history = reviewHistory(material.log, calendar, now);
    summary.streak = history.streak;
    summary.longestStreak = history.longestStreak;
    summary.week.assign(history.days.end() - kDaysShown, history.days.end());
    summary.studiedToday = history.days.back().reviews > 0;
    const Date lately = now - kLately;
    double seconds = 0;
    std::size_t timed = 0;
    for (const ReviewLogEntry& entry : material.log) {
        if (entry.kind != ReviewLogEntry::Kind::rating || entry.secondsTaken <= 0 || entry.at < lately) continue;
        seconds += entry.secondsTaken;
        ++timed;
    }
    if (timed >= kAnswersWanted) summary.secondsPerCard = seconds / static_cast<double>(timed);
}

}  // namespace

TodaySummary todaySummary(const TodayMaterial& material, const LocalCalendar& calendar, Date now,
                          std::stop_token stop) {
    TodaySummary summary;
    const Names names(material.notebooks);
    tellDecks(summary, studyStatistics(material.study, calendar, now, 1, stop), names);
    tellPages(summary, material, names, now, stop);
    tellExams(summary, material, names, calendar, now);
    tellHistory(summary, material, calendar, now);
    return summary;
}

}  // namespace tessary
