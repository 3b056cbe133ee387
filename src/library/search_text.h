#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text_services.h"

namespace tessary {

/// Bytes of a text.
struct TextSpan {
    std::size_t start = 0;
    std::size_t length = 0;

    friend bool operator==(const TextSpan&, const TextSpan&) = default;
};

/// A text as searches compare it: without case and diacritics. Line ends and blanks stay as they are.
[[nodiscard]] std::string searchFolded(std::string_view text, const TextServices& services);

/// What a query asks for, folded, the longest first. What stands in double quotes counts as one word.
[[nodiscard]] std::vector<std::string> searchWords(std::string_view query, const TextServices& services);

/// Where the byte at `foldedOffset` of the folded line comes from in the line.
[[nodiscard]] std::size_t originalOffset(std::string_view line, std::size_t foldedOffset, const TextServices& services);

/// Where the words of a query stand in `text`, in order and without overlaps. Meant for titles and excerpts: each
/// match costs a few foldings of the text.
[[nodiscard]] std::vector<TextSpan> searchMarks(std::string_view text, const std::vector<std::string>& words,
                                                const TextServices& services);

}  // namespace tessary
