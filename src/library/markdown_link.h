#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tessary {

/// A piece of a text, in bytes.
struct TextSpan {
    std::size_t begin;
    std::size_t end;
};

/// The target of a link that stands at `begin`, as written, with "<" and ">" if it has them.
[[nodiscard]] std::optional<TextSpan> linkTargetAt(std::string_view text, std::size_t begin);

struct InlineTarget {
    TextSpan target;
    std::size_t end;  ///< behind the closing parenthesis
};

/// What stands in the parentheses of a link, "(target)" or "(target "title")"; `open` is the place of the first one.
[[nodiscard]] std::optional<InlineTarget> inlineTargetAt(std::string_view text, std::size_t open);

}  // namespace tessary
