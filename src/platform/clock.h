#pragma once

#include "base/date.h"

namespace tessary {

/// Tells the present moment.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Date now() const = 0;
};

/// Days and wall-clock readings in one time zone, which the object is made for. A day may have 23 or 25 hours.
class LocalCalendar {
public:
    virtual ~LocalCalendar() = default;
    /// The wall clock of this zone at `moment`.
    [[nodiscard]] virtual CivilTime civilTime(Date moment) const = 0;
    /// The first moment of the local day that holds `moment`.
    [[nodiscard]] virtual Date startOfDay(Date moment) const = 0;
    /// The same wall-clock time `days` calendar days later (earlier when negative). A time that this day skips
    /// moves forward by the gap.
    [[nodiscard]] virtual Date addingDays(Date moment, int days) const = 0;
};

}  // namespace tessary
