#pragma once

namespace tessary {

enum class ThermalLevel { nominal, fair, serious, critical };

/// How warm the machine is. Any thread.
class ThermalState {
public:
    virtual ~ThermalState() = default;
    /// Nominal when the machine does not tell.
    [[nodiscard]] virtual ThermalLevel level() const = 0;
};

}  // namespace tessary
