#pragma once

#include <filesystem>

#include "platform/thermal_state.h"

namespace tessary {

/// Asks the kernel's thermal zones each time; the worst zone counts. A zone is critical from 5 °C below its critical
/// trip point on, serious from a hot or passive one on, fair from an active one on.
class LinuxThermalState final : public ThermalState {
public:
    /// `zones` is the folder with the "thermal_zone…" folders.
    explicit LinuxThermalState(std::filesystem::path zones = "/sys/class/thermal");

    [[nodiscard]] ThermalLevel level() const override;

private:
    std::filesystem::path zones_;
};

}  // namespace tessary
