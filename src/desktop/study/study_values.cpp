#include "desktop/study/study_values.h"

#include <QtCore/QDate>
#include <QtCore/QLocale>
#include <QtCore/QObject>
#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

constexpr int kDaysOfWeek = 7;
constexpr int kShades = 4;
constexpr int kColumnsOfName = 3;  // what a month's name takes

QDate dateOf(CivilDay day) { return {day.year, day.month, day.day}; }

QString dayName(CivilDay today, std::size_t days) {
    if (days == 0) return QObject::tr("Today");
    if (days == 1) return QObject::tr("Tomorrow");
    return QLocale::c().toString(dateOf(today).addDays(static_cast<qint64>(days)), "ddd d MMM");
}

/// Reviews of a day that few days exceed; at least 1.
double busyDay(const ReviewHistory& history) {
    constexpr double kShareBelow = 0.9;
    std::vector<std::int64_t> counts;
    for (const ReviewHistory::Day& day : history.days) {
        if (day.reviews > 0) counts.push_back(day.reviews);
    }
    if (counts.empty()) return 1;
    const auto at = static_cast<std::ptrdiff_t>(static_cast<double>(counts.size() - 1) * kShareBelow);
    std::ranges::nth_element(counts, counts.begin() + at);
    return static_cast<double>(counts[static_cast<std::size_t>(at)]);
}

}  // namespace

// The words are English, so are the thousands.
QString countOf(std::int64_t count, const QString& one, const QString& many) {
    return QLocale(QLocale::English).toString(static_cast<qlonglong>(count)) + QLatin1Char(' ') +
           (count == 1 ? one : many);
}

QStringList forecastNames(CivilDay today, std::size_t count) {
    QStringList names;
    for (std::size_t i = 0; i < count; ++i) names.append(dayName(today, i));
    return names;
}

QStringList forecastTicks(CivilDay today, std::size_t count) {
    QStringList ticks{QObject::tr("Today")};
    for (std::size_t i = 1; i < count; ++i) {
        ticks.append(QLocale::c().toString(dateOf(today).addDays(static_cast<qint64>(i)), "d MMM"));
    }
    return ticks;
}

QString forecastText(const std::vector<std::int64_t>& forecast, CivilDay today) {
    QStringList parts;
    for (std::size_t i = 0; i < forecast.size(); ++i) {
        if (forecast[i] > 0) parts.append(dayName(today, i) + QLatin1Char(' ') + QString::number(forecast[i]));
    }
    return parts.isEmpty() ? QObject::tr("Nothing falls due.") : parts.join(", ");
}

QString recallText(const StudyStatistics& statistics) {
    constexpr int kPercentOfStep = 100 / static_cast<int>(StudyStatistics::kRecallSteps);
    QStringList parts;
    int from = 0;
    for (const std::int64_t cards : statistics.recall) {
        if (cards > 0) {
            parts.append(QObject::tr("%1 to %2 %: %3")
                             .arg(from)
                             .arg(from + kPercentOfStep)
                             .arg(countOf(cards, QObject::tr("card"), QObject::tr("cards"))));
        }
        from += kPercentOfStep;
    }
    return parts.isEmpty() ? QObject::tr("No card was reviewed yet.") : parts.join("; ");
}

QList<int> heatLevels(const ReviewHistory& history) {
    const double busy = busyDay(history);
    QList<int> levels;
    for (const ReviewHistory::Day& day : history.days) {
        levels.append(
            std::min(kShades, static_cast<int>(std::ceil(kShades * static_cast<double>(day.reviews) / busy))));
    }
    return levels;
}

QVariantList heatMonths(const ReviewHistory& history) {
    QVariantList months;
    int shown = -1;
    for (std::size_t i = 0; i < history.days.size(); i += kDaysOfWeek) {
        const CivilDay monday = history.days[i].day;
        if (monday.month == shown) continue;
        const auto column = static_cast<int>(i / kDaysOfWeek);
        // A month that only just begins or ends at the edge gives its place to its neighbour.
        if (!months.isEmpty() && column - months.back().toMap()["column"].toInt() < kColumnsOfName) months.removeLast();
        if (column <= ReviewHistory::kWeeks - kColumnsOfName) {
            months.append(
                QVariantMap{{"column", column}, {"name", QLocale::c().monthName(monday.month, QLocale::ShortFormat)}});
        }
        shown = monday.month;
    }
    return months;
}

QString heatText(const ReviewHistory::Day& day) {
    return QLocale::c().toString(dateOf(day.day), "ddd d MMM yyyy") + ": " +
           (day.reviews == 0 ? QObject::tr("no reviews")
                             : countOf(day.reviews, QObject::tr("review"), QObject::tr("reviews")));
}

QString daysUntilText(int days) {
    if (days == 0) return QObject::tr("today");
    if (days == 1) return QObject::tr("tomorrow");
    return QObject::tr("in %1 days").arg(days);
}

}  // namespace tessary
