#include "base/date.h"

#include <fmt/format.h>

#include <charconv>
#include <chrono>
#include <cmath>

namespace tessary {
namespace {

using std::chrono::sys_days;

constexpr sys_days kReferenceDay = sys_days{std::chrono::year{2001} / 1 / 1};

/// Consumes a text from the left; every reader leaves it untouched when it fails.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    bool atEnd() const { return rest_.empty(); }

    bool skipAny(std::string_view characters) {
        if (rest_.empty() || characters.find(rest_.front()) == std::string_view::npos) return false;
        rest_.remove_prefix(1);
        return true;
    }

    /// Exactly `count` decimal digits.
    std::optional<int> digits(std::size_t count) {
        if (rest_.size() < count) return std::nullopt;
        int value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (rest_[i] < '0' || rest_[i] > '9') return std::nullopt;
            value = value * 10 + (rest_[i] - '0');
        }
        rest_.remove_prefix(count);
        return value;
    }

    /// The digits after a decimal point, as a fraction of 1.
    std::optional<double> fraction() {
        double value = 0;
        double place = 0.1;
        std::size_t count = 0;
        for (; count < rest_.size() && rest_[count] >= '0' && rest_[count] <= '9'; ++count, place /= 10) {
            value += (rest_[count] - '0') * place;
        }
        if (count == 0) return std::nullopt;
        rest_.remove_prefix(count);
        return value;
    }

private:
    std::string_view rest_;
};

struct TimeOfDay {
    int seconds = 0;
    double fraction = 0;
};

std::optional<TimeOfDay> scanTime(Scanner& scanner) {
    const std::optional<int> hour = scanner.digits(2);
    if (!hour || !scanner.skipAny(":")) return std::nullopt;
    const std::optional<int> minute = scanner.digits(2);
    if (!minute) return std::nullopt;
    int second = 0;
    double fraction = 0;
    if (scanner.skipAny(":")) {
        const std::optional<int> read = scanner.digits(2);
        if (!read) return std::nullopt;
        second = *read;
        if (scanner.skipAny(".,")) {
            const std::optional<double> part = scanner.fraction();
            if (!part) return std::nullopt;
            fraction = *part;
        }
    }
    const bool leapSecond = second == 60;
    if (*hour > 23 || *minute > 59 || (second > 59 && !leapSecond)) return std::nullopt;
    return TimeOfDay{(*hour * 60 + *minute) * 60 + second, fraction};
}

/// Seconds east of UTC; 0 when the text has ended.
std::optional<int> scanOffset(Scanner& scanner) {
    if (scanner.atEnd() || scanner.skipAny("Zz")) return 0;
    const bool east = scanner.skipAny("+");
    if (!east && !scanner.skipAny("-")) return std::nullopt;
    const std::optional<int> hours = scanner.digits(2);
    if (!hours) return std::nullopt;
    int minutes = 0;
    scanner.skipAny(":");
    if (!scanner.atEnd()) {
        const std::optional<int> read = scanner.digits(2);
        if (!read) return std::nullopt;
        minutes = *read;
    }
    if (*hours > 23 || minutes > 59) return std::nullopt;
    const int seconds = (*hours * 60 + minutes) * 60;
    return east ? seconds : -seconds;
}

}  // namespace

std::optional<std::string> formatIso8601(Date date) {
    const double whole = std::floor(date.seconds);
    constexpr double kEarliest = -63113904000.0;  // 0001-01-01T00:00:00Z
    constexpr double kLatest = 252423993599.0;    // 9999-12-31T23:59:59Z
    if (!(whole >= kEarliest && whole <= kLatest)) return std::nullopt;
    const auto moment =
        std::chrono::sys_seconds{kReferenceDay} + std::chrono::seconds{static_cast<std::int64_t>(whole)};
    const sys_days day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day ymd{day};
    const std::int64_t second = (moment - std::chrono::sys_seconds{day}).count();
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", static_cast<int>(ymd.year()),
                       static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()), second / 3600,
                       second / 60 % 60, second % 60);
}

std::optional<Date> parseIso8601(std::string_view text) {
    Scanner scanner(text);
    const std::optional<int> year = scanner.digits(4);
    if (!year || !scanner.skipAny("-")) return std::nullopt;
    const std::optional<int> month = scanner.digits(2);
    if (!month || !scanner.skipAny("-")) return std::nullopt;
    const std::optional<int> day = scanner.digits(2);
    if (!day) return std::nullopt;
    const std::chrono::year_month_day ymd{std::chrono::year{*year}, std::chrono::month{static_cast<unsigned>(*month)},
                                          std::chrono::day{static_cast<unsigned>(*day)}};
    if (!ymd.ok()) return std::nullopt;

    TimeOfDay time;
    int offset = 0;
    if (scanner.skipAny("Tt ")) {
        const std::optional<TimeOfDay> scanned = scanTime(scanner);
        const std::optional<int> scannedOffset = scanned ? scanOffset(scanner) : std::nullopt;
        if (!scannedOffset) return std::nullopt;
        time = *scanned;
        offset = *scannedOffset;
    }
    if (!scanner.atEnd()) return std::nullopt;
    const auto days = (sys_days{ymd} - kReferenceDay).count();
    return Date{static_cast<double>(days) * kSecondsPerDay + (time.seconds - offset) + time.fraction};
}

std::string dayKey(CivilDay day) { return fmt::format("{:04}-{:02}-{:02}", day.year, day.month, day.day); }

std::string monthKey(CivilDay day) { return fmt::format("{:04}-{:02}", day.year, day.month); }

std::string timeStamp(CivilTime time) {
    return fmt::format("{}-{:02}{:02}{:02}", dayKey(time.day), time.hour, time.minute, time.second);
}

}  // namespace tessary
