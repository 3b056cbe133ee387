#pragma once

#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>

#include "study/study_statistics.h"

/// What the charts of the study hub show of the numbers: the words, and the shades of the year.
namespace tessary {

/// "38 cards", "1 card".
[[nodiscard]] QString countOf(std::int64_t count, const QString& one, const QString& many);

/// Of `count` days from `today` on: "Today", "Tomorrow", "Mon 23 Nov".
[[nodiscard]] QStringList forecastNames(CivilDay today, std::size_t count);
/// The same days as an axis names them: "Today", "28 Nov".
[[nodiscard]] QStringList forecastTicks(CivilDay today, std::size_t count);
/// "Today 38, tomorrow 31, ..." of the days that have any.
[[nodiscard]] QString forecastText(const std::vector<std::int64_t>& forecast, CivilDay today);

/// "0 to 10 %: 14 cards; ..." of the steps that have any.
[[nodiscard]] QString recallText(const StudyStatistics& statistics);

/// 0 for a day without a review, else 1 to 4 in proportion to a busy day: the busiest tenth counts alike.
[[nodiscard]] QList<int> heatLevels(const ReviewHistory& history);
/// Where a month begins: maps of "column", a week from 0 on, and "name".
[[nodiscard]] QVariantList heatMonths(const ReviewHistory& history);
/// "Sat 21 Nov 2026: 38 reviews".
[[nodiscard]] QString heatText(const ReviewHistory::Day& day);

/// "today", "tomorrow", "in 9 days".
[[nodiscard]] QString daysUntilText(int days);

}  // namespace tessary
