#include "ai/text_cleaning.h"

#include <algorithm>

#include "base/text.h"

namespace tessary {
namespace {

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// The code point that ends before `end`.
char32_t pointBefore(std::string_view text, std::size_t end) {
    constexpr std::size_t kLongest = 4;  // bytes
    std::size_t begin = end - 1;
    while (begin > 0 && end - begin < kLongest && isContinuation(text[begin])) --begin;
    return codePoints(text.substr(begin, end - begin)).back();
}

/// The code point that begins at `begin`.
char32_t pointAt(std::string_view text, std::size_t begin) {
    std::size_t end = begin + 1;
    while (end < text.size() && isContinuation(text[end])) ++end;
    return codePoints(text.substr(begin, end - begin)).front();
}

/// Every line end as "\n". U+0001 goes: text layers use it for nothing a reader sees.
std::string withPlainLineEnds(std::string_view text) {
    constexpr char kStray = '\x01';
    std::string result;
    result.reserve(text.size());
    constexpr std::string_view kSpecial = "\r\x01";
    while (!text.empty()) {
        const std::size_t next = std::min(text.find_first_of(kSpecial), text.size());
        result += text.substr(0, next);
        text.remove_prefix(next);
        if (text.empty()) break;
        if (text.front() != kStray) result += '\n';
        text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
    }
    return result;
}

/// Joins a letter, a hyphen at a line's end and a lower-case letter on the next line. A letter ends one such joint at
/// most: it can't begin the next.
std::string dehyphenated(std::string_view text, const TextServices& services) {
    std::string result;
    result.reserve(text.size());
    std::size_t copied = 0;
    std::size_t usedUpTo = 0;
    for (std::size_t at = text.find("-\n"); at != std::string_view::npos; at = text.find("-\n", at + 1)) {
        const std::size_t next = at + 2;
        if (at == usedUpTo || next == text.size()) continue;
        if (!services.isLetter(pointBefore(text, at)) || !services.isLowercaseLetter(pointAt(text, next))) continue;
        result += text.substr(copied, at - copied);
        copied = next;
        usedUpTo = next + 1;
        while (usedUpTo < text.size() && isContinuation(text[usedUpTo])) ++usedUpTo;
    }
    result += text.substr(copied);
    return result;
}

bool isBlank(char byte) { return byte == ' ' || byte == '\t'; }

/// Runs of spaces and tabs become one space.
std::string withSingleSpaces(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isBlank(text[i])) {
            result += text[i];
        } else if (i == 0 || !isBlank(text[i - 1])) {
            result += ' ';
        }
    }
    return result;
}

/// A single line end becomes a space, two and more become a blank line.
std::string withJoinedLines(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t line = std::min(text.find('\n'), text.size());
        result += text.substr(0, line);
        text.remove_prefix(line);
        const std::size_t run = std::min(text.find_first_not_of('\n'), text.size());
        if (run > 0) result += run == 1 ? " " : "\n\n";
        text.remove_prefix(run);
    }
    return result;
}

/// No spaces around the blank lines between paragraphs.
std::string withTightParagraphs(std::string_view text) {
    constexpr std::string_view kBreak = "\n\n";
    std::string result;
    result.reserve(text.size());
    while (true) {
        const std::size_t at = text.find(kBreak);
        if (at == std::string_view::npos) break;
        std::string_view paragraph = text.substr(0, at);
        paragraph = paragraph.substr(0, paragraph.find_last_not_of(' ') + 1);
        result += paragraph;
        result += kBreak;
        text.remove_prefix(at + kBreak.size());
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    }
    result += text;
    return result;
}

/// Spaces of all kinds and line ends, as Unicode's White_Space has them.
bool isSpace(char32_t point) {
    return (point >= 0x09 && point <= 0x0D) || point == ' ' || point == 0x85 || point == 0xA0 || point == 0x1680 ||
           (point >= 0x2000 && point <= 0x200A) || point == 0x2028 || point == 0x2029 || point == 0x202F ||
           point == 0x205F || point == 0x3000;
}

std::string trimmedOfAllSpaces(std::string_view text) {
    while (!text.empty() && isSpace(pointAt(text, 0))) {
        text.remove_prefix(1);
        while (!text.empty() && isContinuation(text.front())) text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(pointBefore(text, text.size()))) {
        while (text.size() > 1 && isContinuation(text.back())) text.remove_suffix(1);
        text.remove_suffix(1);
    }
    return std::string(text);
}

}  // namespace

// The order of the steps matters: a line of spaces is no blank line, and the spaces that joined lines leave behind
// stay.
std::string cleanedText(std::string_view text, const TextServices& services) {
    std::string result = withPlainLineEnds(text);
    result = dehyphenated(result, services);
    result = withSingleSpaces(result);
    result = withJoinedLines(result);
    result = withTightParagraphs(result);
    return trimmedOfAllSpaces(result);
}

}  // namespace tessary
