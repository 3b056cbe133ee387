#pragma once

#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

/// Without ASCII white space (space, tab, line breaks, form feed, vertical tab) at both ends. A view into `text`.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// The lines of `text` without their ends ("\n", "\r\n" or "\r"). A final line end adds no empty line. Views into
/// `text`.
[[nodiscard]] std::vector<std::string_view> splitLines(std::string_view text);

/// All pieces between the separators, empty ones included; one empty piece for an empty text. Views into `text`.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);

/// A to Z become a to z; every other byte stays.
[[nodiscard]] std::string asciiLowered(std::string_view text);

[[nodiscard]] bool equalsIgnoringAsciiCase(std::string_view a, std::string_view b);

[[nodiscard]] std::string replacedAll(std::string_view text, std::string_view from, std::string_view to);

[[nodiscard]] std::string joined(const std::vector<std::string>& pieces, std::string_view separator);

/// The number that the whole of `text` is, as `std::from_chars` reads it.
template <class Number>
[[nodiscard]] std::optional<Number> parseNumber(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// Well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
[[nodiscard]] bool isValidUtf8(std::string_view text);

/// The same text with every malformed sequence replaced by U+FFFD.
[[nodiscard]] std::string scrubbedUtf8(std::string_view text);

/// The scalar values of a well-formed text; malformed sequences read as U+FFFD.
[[nodiscard]] std::u32string codePoints(std::string_view text);

/// Appends one scalar value as UTF-8; a surrogate or a value above U+10FFFF becomes U+FFFD.
void appendUtf8(std::string& text, char32_t codePoint);

/// The text without a leading UTF-8 byte-order mark. A view into `text`.
[[nodiscard]] std::string_view withoutByteOrderMark(std::string_view text);

}  // namespace tessary
