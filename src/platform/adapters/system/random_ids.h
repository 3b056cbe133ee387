#pragma once

#include "platform/id_source.h"

namespace tessary {

/// Version 4 identifiers out of the system's random source. Any thread.
class RandomIds final : public IdSource {
public:
    /// Throws std::system_error when the system has no random bytes to give.
    [[nodiscard]] Uuid next() override;
};

}  // namespace tessary
