#pragma once

#include "platform/clock.h"

namespace tessary {

/// The computer's clock. It may jump, also backwards.
class SystemClock final : public Clock {
public:
    [[nodiscard]] Date now() const override;
};

}  // namespace tessary
