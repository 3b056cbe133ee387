#include "library/markdown_link.h"

#include "library/markdown_scan.h"

namespace tessary {
namespace {

constexpr int kDeepestParentheses = 32;  // in a target; without a limit a text of parentheses costs its square

/// Behind the title that stands at `from`, or `from` when none does. A title ends on its line.
std::size_t afterTitle(std::string_view text, std::size_t from) {
    const char open = charAt(text, from);
    if (open != '"' && open != '\'' && open != '(') return from;
    const char close = open == '(' ? ')' : open;
    for (std::size_t i = from + 1; i < text.size() && text[i] != '\n'; ++i) {
        if (text[i] == close) return i + 1;
        if (text[i] == '(' && open == '(') return from;
        if (text[i] == '\\') ++i;
    }
    return from;
}

}  // namespace

std::optional<TextSpan> linkTargetAt(std::string_view text, std::size_t begin) {
    if (charAt(text, begin) == '<') {
        const std::size_t end = text.find_first_of("<>\n", begin + 1);
        return charAt(text, end) == '>' ? std::optional(TextSpan{begin, end + 1}) : std::nullopt;
    }
    int depth = 0;
    std::size_t end = begin;
    for (; end < text.size() && static_cast<unsigned char>(text[end]) > ' '; ++end) {
        if (text[end] == '\\' && isPunctuation(charAt(text, end + 1))) {
            ++end;
        } else if (text[end] == '(' && ++depth > kDeepestParentheses) {
            return std::nullopt;
        } else if (text[end] == ')' && --depth < 0) {
            break;
        }
    }
    return end > begin && depth <= 0 ? std::optional(TextSpan{begin, end}) : std::nullopt;
}

std::optional<InlineTarget> inlineTargetAt(std::string_view text, std::size_t open) {
    const std::optional<TextSpan> target = linkTargetAt(text, skip(text, open + 1, kBlanks));
    if (!target) return std::nullopt;
    std::size_t end = skip(text, target->end, kBlanks);
    if (end > target->end) end = skip(text, afterTitle(text, end), kBlanks);
    return charAt(text, end) == ')' ? std::optional(InlineTarget{*target, end + 1}) : std::nullopt;
}

}  // namespace tessary
