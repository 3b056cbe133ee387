#include "base/text.h"

#include <algorithm>

namespace tessary {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::string_view kWhiteSpace = " \t\n\r\f\v";

constexpr char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

struct DecodedPoint {
    char32_t value;
    std::size_t length;  ///< bytes consumed; 1 for a malformed sequence
    bool valid;
};

/// Decodes the sequence that starts at `at` (table 3-7 of the Unicode Standard).
DecodedPoint decodePoint(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t offset) -> unsigned {
        return at + offset < text.size() ? static_cast<unsigned char>(text[at + offset]) : 0U;
    };
    const unsigned first = byte(0);
    if (first < 0x80) return {first, 1, true};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) return {kReplacement, 1, false};
    const unsigned second = byte(1);
    const unsigned low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    if (second < low || second > high) return {kReplacement, 1, false};
    char32_t value = (first & (0x7FU >> length)) << 6 | (second & 0x3F);
    for (std::size_t i = 2; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return {kReplacement, 1, false};
        value = value << 6 | (byte(i) & 0x3F);
    }
    return {value, length, true};
}

}  // namespace

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    if (first == std::string_view::npos) return text.substr(0, 0);
    return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

std::vector<std::string_view> splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of("\r\n");
        lines.push_back(text.substr(0, end));
        if (end == std::string_view::npos) break;
        const bool pair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
        text.remove_prefix(end + (pair ? 2 : 1));
    }
    return lines;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return pieces;
        text.remove_prefix(end + 1);
    }
}

std::string asciiLowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), lowered);
    return result;
}

bool equalsIgnoringAsciiCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) { return lowered(x) == lowered(y); });
}

std::string replacedAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    result.reserve(text.size());
    for (;;) {
        const std::size_t found = from.empty() ? std::string_view::npos : text.find(from);
        result += text.substr(0, found);
        if (found == std::string_view::npos) return result;
        result += to;
        text.remove_prefix(found + from.size());
    }
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string result;
    for (const std::string& piece : pieces) {
        if (&piece != pieces.data()) result += separator;
        result += piece;
    }
    return result;
}

bool isValidUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const DecodedPoint point = decodePoint(text, at);
        if (!point.valid) return false;
        at += point.length;
    }
    return true;
}

std::string scrubbedUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const DecodedPoint point = decodePoint(text, at);
        if (point.valid) {
            result += text.substr(at, point.length);
        } else {
            appendUtf8(result, kReplacement);
        }
        at += point.length;
    }
    return result;
}

std::u32string codePoints(std::string_view text) {
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const DecodedPoint point = decodePoint(text, at);
        result += point.value;
        at += point.length;
    }
    return result;
}

void appendUtf8(std::string& text, char32_t codePoint) {
    const bool scalar = codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
    const std::uint32_t value = scalar ? codePoint : kReplacement;
    const auto tail = [&](unsigned shift) { text += static_cast<char>(0x80 | (value >> shift & 0x3F)); };
    if (value < 0x80) {
        text += static_cast<char>(value);
    } else if (value < 0x800) {
        text += static_cast<char>(0xC0 | value >> 6);
        tail(0);
    } else if (value < 0x10000) {
        text += static_cast<char>(0xE0 | value >> 12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | value >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

std::string_view withoutByteOrderMark(std::string_view text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
    return text;
}

}  // namespace tessary
