#pragma once

#include <string_view>

namespace tessary {

/// Where stores report what went wrong behind the scenes, for whoever looks into a problem. Any thread.
class Console {
public:
    virtual ~Console() = default;
    /// Prints one line; `message` has no line end.
    virtual void print(std::string_view message) = 0;
};

}  // namespace tessary
