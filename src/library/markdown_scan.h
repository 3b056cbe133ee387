#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What all readers of Markdown in this folder need: characters, lines and code. Texts are UTF-8 with "\n" as line end,
/// places are bytes. Pure functions, any thread, linear in the text.
namespace tessary {

inline constexpr std::string_view kBlanks = " \t\n";

[[nodiscard]] bool isBlank(char c);

/// ASCII punctuation, the characters that a backslash can escape.
[[nodiscard]] bool isPunctuation(char c);

/// Zero beyond the end, `npos` included, which is no character of a note.
[[nodiscard]] char charAt(std::string_view text, std::size_t index);

/// The first place at or after `from` that holds none of `characters`; the end of the text without one.
[[nodiscard]] std::size_t skip(std::string_view text, std::size_t from, std::string_view characters);

/// Where `part`, a view into `whole`, begins.
[[nodiscard]] std::size_t placeIn(std::string_view whole, std::string_view part);

/// Without blank lines at the head and white space at the end. A view into `text`.
[[nodiscard]] std::string_view withoutOuterBlankLines(std::string_view text);

/// The length of the "- " or "12. " a line begins with; 0 without one.
[[nodiscard]] std::size_t listMarker(std::string_view line);

/// Tells the lines of fenced code from the others.
class FenceTracker {
public:
    /// Whether the line is a fence or stands inside one. Lines come in order.
    bool isCode(std::string_view line);

private:
    bool opens(std::string_view line);

    char mark_ = '`';
    std::size_t length_ = 0;  // 0 outside fences
    bool isQuoted_ = false;
};

struct CodeSpan {
    std::size_t begin;
    std::size_t end;  ///< behind the closing backticks
    std::size_t ticks;  ///< on either side
};

/// The code spans of one paragraph, in order.
[[nodiscard]] std::vector<CodeSpan> codeSpans(std::string_view paragraph);

/// The same text with all code, fenced or in spans, blotted out byte by byte; line ends stay.
[[nodiscard]] std::string codeMasked(std::string_view text);

}  // namespace tessary
