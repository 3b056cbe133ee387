#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

struct Heading {
    std::string title;      ///< plain text, never empty
    std::size_t begin = 0;  ///< of its first line, in bytes
    std::size_t end = 0;    ///< behind its last line end
    int level = 1;          ///< 1 to 6
};

/// The headings outside code, of "#" signs or of an underline, that say anything; in order.
[[nodiscard]] std::vector<Heading> allHeadings(std::string_view markdown);

/// The first of them.
[[nodiscard]] std::optional<Heading> firstHeading(std::string_view markdown);

}  // namespace tessary
