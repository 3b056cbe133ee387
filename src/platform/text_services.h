#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessary {

/// What Unicode knows about text. Texts are UTF-8; malformed sequences count as U+FFFD. Any thread.
class TextServices {
public:
    virtual ~TextServices() = default;
    /// For comparison without regard to case and diacritics: "Prüfung" and "PRUFUNG" both become "prufung".
    [[nodiscard]] virtual std::string folded(std::string_view text) const = 0;
    /// User-perceived characters (extended grapheme clusters, UAX #29).
    [[nodiscard]] virtual std::size_t characterCount(std::string_view text) const = 0;
    /// The first `count` user-perceived characters, or all there are. A view into `text`.
    [[nodiscard]] virtual std::string_view prefix(std::string_view text, std::size_t count) const = 0;
    [[nodiscard]] virtual bool isLetter(char32_t codePoint) const = 0;
    /// Of the general category Ll.
    [[nodiscard]] virtual bool isLowercaseLetter(char32_t codePoint) const = 0;
    /// A decimal digit of any script.
    [[nodiscard]] virtual bool isDigit(char32_t codePoint) const = 0;
    /// Terminal columns a code point fills: 0, 1 or 2.
    [[nodiscard]] virtual int columns(char32_t codePoint) const = 0;
};

}  // namespace tessary
