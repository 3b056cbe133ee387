#pragma once

#include <compare>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessary {

inline constexpr double kSecondsPerMinute = 60;
inline constexpr double kSecondsPerDay = 86400;

/// A moment: seconds since 2001-01-01 00:00:00 UTC, kept exactly as read.
struct Date {
    double seconds = 0;

    friend auto operator<=>(const Date&, const Date&) = default;
    friend Date operator+(Date date, double seconds) { return Date{date.seconds + seconds}; }
    friend Date operator-(Date date, double seconds) { return Date{date.seconds - seconds}; }
    /// Seconds from `b` to `a`.
    friend double operator-(Date a, Date b) { return a.seconds - b.seconds; }
};

/// "2026-11-21T09:30:00Z": UTC, fractions of a second dropped downwards.
/// Absent outside the years 0 to 9999, which the format cannot carry.
[[nodiscard]] std::optional<std::string> formatIso8601(Date date);

/// Reads "yyyy-MM-dd", optionally followed by "T" or a space and "HH:mm[:ss[.fraction]]", and by "Z" or an offset
/// ("+02:00", "+0200", "+02"). Without an offset the time is UTC.
[[nodiscard]] std::optional<Date> parseIso8601(std::string_view text);

/// A day of the calendar, in some time zone that the context tells.
struct CivilDay {
    int year = 2001;
    int month = 1;  ///< 1 to 12
    int day = 1;    ///< 1 to 31

    friend auto operator<=>(const CivilDay&, const CivilDay&) = default;
};

/// A reading of the wall clock, in some time zone that the context tells.
struct CivilTime {
    CivilDay day;
    int hour = 0;
    int minute = 0;
    int second = 0;

    friend auto operator<=>(const CivilTime&, const CivilTime&) = default;
};

/// "yyyy-MM-dd", the key of a day in records and file names.
[[nodiscard]] std::string dayKey(CivilDay day);

/// "yyyy-MM", the key of a month in file names.
[[nodiscard]] std::string monthKey(CivilDay day);

/// "yyyy-MM-dd-HHmmss", the time stamp in file names.
[[nodiscard]] std::string timeStamp(CivilTime time);

}  // namespace tessary

template <>
struct std::hash<tessary::Date> {
    std::size_t operator()(tessary::Date date) const noexcept { return std::hash<double>{}(date.seconds); }
};
