#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessary {

struct Heading {
    std::string title;      ///< plain text, never empty
    std::size_t begin = 0;  ///< of its first line, in bytes
    std::size_t end = 0;    ///< behind its last line end
};

/// The first heading outside code, of "#" signs or of an underline, that says anything.
[[nodiscard]] std::optional<Heading> firstHeading(std::string_view markdown);

}  // namespace tessary
