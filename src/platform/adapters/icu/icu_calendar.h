#pragma once

#include <memory>
#include <string_view>

#include "platform/clock.h"

namespace tessary {

/// Proleptic Gregorian days. Where the clocks go back, a repeated reading means its first occurrence. Any thread.
class IcuCalendar final : public LocalCalendar {
public:
    /// `zone` is an IANA name ("Europe/Berlin") or a fixed offset ("GMT+02:00"); empty means the system's zone.
    /// Throws std::invalid_argument when nothing is known of it.
    explicit IcuCalendar(std::string_view zone = {});
    ~IcuCalendar() override;
    IcuCalendar(IcuCalendar&&) noexcept;
    IcuCalendar& operator=(IcuCalendar&&) noexcept;

    [[nodiscard]] CivilTime civilTime(Date moment) const override;
    [[nodiscard]] Date startOfDay(Date moment) const override;
    [[nodiscard]] Date addingDays(Date moment, int days) const override;

private:
    class Zone;
    std::unique_ptr<const Zone> zone_;
};

}  // namespace tessary
