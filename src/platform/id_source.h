#pragma once

#include "base/uuid.h"

namespace tessary {

/// Makes new identifiers.
class IdSource {
public:
    virtual ~IdSource() = default;
    [[nodiscard]] virtual Uuid next() = 0;
};

}  // namespace tessary
