#include "platform/adapters/icu/icu_calendar.h"

#include <unicode/basictz.h>
#include <unicode/tztrans.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace tessary {
namespace {

using std::chrono::sys_days;

constexpr std::int64_t kDaySeconds = 86400;
constexpr double kMillisecondsPerSecond = 1000;
constexpr sys_days kReferenceDay = sys_days{std::chrono::year{2001} / 1 / 1};
constexpr double kUnixToReference = static_cast<double>(kReferenceDay.time_since_epoch().count()) * kSecondsPerDay;

/// Some 28000 years either way: what std::chrono::year can count. Moments beyond it are read as this far away.
constexpr double kFarthest = 9e11;

double withinCalendar(double seconds) {
    return std::isnan(seconds) ? 0 : std::clamp(std::floor(seconds), -kFarthest, kFarthest);
}

std::int64_t dayIndex(std::int64_t localSeconds) {
    return (localSeconds - (localSeconds % kDaySeconds + kDaySeconds) % kDaySeconds) / kDaySeconds;
}

CivilDay civilDay(std::int64_t index) {
    const std::chrono::year_month_day ymd{kReferenceDay + std::chrono::days{index}};
    return {static_cast<int>(ymd.year()), static_cast<int>(static_cast<unsigned>(ymd.month())),
            static_cast<int>(static_cast<unsigned>(ymd.day()))};
}

UDate toIcu(double seconds) { return (seconds + kUnixToReference) * kMillisecondsPerSecond; }

double fromIcu(UDate moment) { return moment / kMillisecondsPerSecond - kUnixToReference; }

double totalSeconds(std::int32_t raw, std::int32_t saving) {
    return static_cast<double>(raw + saving) / kMillisecondsPerSecond;
}

bool isUnknown(const icu::TimeZone& zone) {
    icu::UnicodeString id;
    return zone.getID(id) == icu::UnicodeString(UCAL_UNKNOWN_ZONE_ID);
}

std::unique_ptr<icu::TimeZone> findZone(std::string_view name) {
    if (name.empty()) return std::unique_ptr<icu::TimeZone>(icu::TimeZone::detectHostTimeZone());
    const std::string text(name);
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(text)));
    if (!zone || isUnknown(*zone)) throw std::invalid_argument("unknown time zone: " + text);
    return zone;
}

}  // namespace

/// Converts between whole seconds of universal time and of the wall clock, both counted from 2001-01-01 00:00:00.
class IcuCalendar::Zone {
public:
    explicit Zone(std::string_view name) : owned_(findZone(name)) {
        zone_ = dynamic_cast<const icu::BasicTimeZone*>(owned_.get());
        if (zone_ == nullptr) throw std::invalid_argument("unusable time zone: " + std::string(name));
    }

    std::int64_t toLocal(double seconds) const {
        std::int32_t raw = 0;
        std::int32_t saving = 0;
        UErrorCode status = U_ZERO_ERROR;
        zone_->getOffset(toIcu(seconds), false, raw, saving, status);
        return static_cast<std::int64_t>(std::floor(seconds + totalSeconds(raw, saving)));
    }

    /// A skipped reading moves forward by the gap; a repeated one means its first occurrence.
    double toUniversal(std::int64_t local) const {
        std::int32_t raw = 0;
        std::int32_t saving = 0;
        UErrorCode status = U_ZERO_ERROR;
        const auto seconds = static_cast<double>(local);
        zone_->getOffsetFromLocal(toIcu(seconds), UCAL_TZ_LOCAL_FORMER, UCAL_TZ_LOCAL_FORMER, raw, saving, status);
        return seconds - totalSeconds(raw, saving);
    }

    double lastChange(double seconds) const {
        icu::TimeZoneTransition transition;
        return zone_->getPreviousTransition(toIcu(seconds), true, transition) ? fromIcu(transition.getTime()) : seconds;
    }

private:
    std::unique_ptr<icu::TimeZone> owned_;
    const icu::BasicTimeZone* zone_ = nullptr;
};

IcuCalendar::IcuCalendar(std::string_view zone) : zone_(std::make_unique<Zone>(zone)) {}
IcuCalendar::~IcuCalendar() = default;
IcuCalendar::IcuCalendar(IcuCalendar&&) noexcept = default;
IcuCalendar& IcuCalendar::operator=(IcuCalendar&&) noexcept = default;

CivilTime IcuCalendar::civilTime(Date moment) const {
    const std::int64_t local = zone_->toLocal(withinCalendar(moment.seconds));
    const std::int64_t day = dayIndex(local);
    const auto second = static_cast<int>(local - day * kDaySeconds);
    return {civilDay(day), second / 3600, second / 60 % 60, second % 60};
}

Date IcuCalendar::startOfDay(Date moment) const {
    const std::int64_t midnight = dayIndex(zone_->toLocal(withinCalendar(moment.seconds))) * kDaySeconds;
    const double start = zone_->toUniversal(midnight);
    const bool skipped = zone_->toLocal(start) != midnight;
    return Date{skipped ? zone_->lastChange(start) : start};
}

Date IcuCalendar::addingDays(Date moment, int days) const {
    const double whole = std::floor(moment.seconds);
    const bool exact = whole == withinCalendar(whole);
    if (days == 0 || !exact) return moment + days * kSecondsPerDay;
    const std::int64_t local = zone_->toLocal(whole) + days * kDaySeconds;
    return Date{zone_->toUniversal(local) + (moment.seconds - whole)};
}

}  // namespace tessary
