#include "desktop/study/study_decks_model.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "desktop/desk/places.h"
#include "desktop/study/study_values.h"

namespace tessary {
namespace {

constexpr int kSoon = 14;  // days

/// Days until the next exam of a deck; -1 without one.
int nextExam(const Desk& desk, const ShelfItem& place) {
    const NotebookId* const notebook = std::get_if<NotebookId>(&place);
    const Exam* next = nullptr;
    for (const Exam& exam : desk.library().exams()) {
        const bool isOurs = notebook != nullptr && exam.notebookID == *notebook && exam.date >= desk.now();
        if (isOurs && (next == nullptr || exam.date < next->date)) next = &exam;
    }
    if (next == nullptr) return -1;
    const LocalCalendar& calendar = desk.ports().calendar;
    const double seconds = calendar.startOfDay(next->date) - calendar.startOfDay(desk.now());
    return static_cast<int>(std::lround(seconds / kSecondsPerDay));
}

}  // namespace

void StudyDecksModel::show(const Desk& desk, const StudyStatistics& statistics) {
    std::vector<Row> rows;
    for (const auto& [place, stats] : statistics.decks) {
        const QString name = deckName(desk, place);
        if (name.isEmpty()) continue;
        rows.push_back({.place = toQml(place),
                        .name = name,
                        .color = deckColor(desk, place),
                        .stats = stats,
                        .examDays = nextExam(desk, place)});
    }
    std::ranges::sort(rows, [](const Row& a, const Row& b) {
        return std::tuple(-a.stats.due, a.name, a.place) < std::tuple(-b.stats.due, b.name, b.place);
    });
    if (std::ranges::equal(rows, rows_, {}, &Row::place, &Row::place)) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (rows[i] == rows_[i]) continue;
            rows_[i] = std::move(rows[i]);
            Q_EMIT dataChanged(index(static_cast<int>(i)), index(static_cast<int>(i)));
        }
        return;
    }
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
    Q_EMIT countChanged();
}

int StudyDecksModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant StudyDecksModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case PlaceRole: return row.place;
        case NameRole: return row.name;
        case ColorRole: return row.color;
        case CardsRole: return static_cast<int>(row.stats.total);
        case DueRole: return static_cast<int>(row.stats.due);
        case NewRole: return static_cast<int>(row.stats.fresh);
        case RecallRole: return row.stats.averageRecall.value_or(-1);
        case ExamRole: return row.examDays < 0 ? QString() : daysUntilText(row.examDays);
        case ExamSoonRole: return row.examDays >= 0 && row.examDays <= kSoon;
        default: return {};
    }
}

QHash<int, QByteArray> StudyDecksModel::roleNames() const {
    return {{PlaceRole, "place"},   {NameRole, "name"}, {ColorRole, "color"},
            {CardsRole, "cards"},   {DueRole, "due"},   {NewRole, "fresh"},
            {RecallRole, "recall"}, {ExamRole, "exam"}, {ExamSoonRole, "examSoon"}};
}

}  // namespace tessary
