#include "platform/adapters/ini/ini_escapes.h"

#include <cstddef>
#include <utility>

#include "base/text.h"

namespace tessary {
namespace {

constexpr std::string_view kEscapeLetters = "abfnrtv\"?'\\";
constexpr std::string_view kEscapedCharacters = "\a\b\f\n\r\t\v\"?'\\";

bool isAsciiAlphanumeric(char32_t c) {
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z') || (c >= U'0' && c <= U'9');
}

std::optional<char32_t> hexDigit(char32_t c) {
    if (c >= U'0' && c <= U'9') return c - U'0';
    if (c >= U'a' && c <= U'f') return c - U'a' + 10;
    if (c >= U'A' && c <= U'F') return c - U'A' + 10;
    return std::nullopt;
}

std::string hex(char32_t value, std::size_t width, std::string_view digits) {
    std::string result;
    for (; value != 0 || result.size() < width; value >>= 4) result.insert(result.begin(), digits[value & 0xF]);
    return result;
}

bool isHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool isLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

/// Escapes name UTF-16 units, so pairs of surrogates may stand among the characters.
std::string utf8FromUnits(std::u32string_view units) {
    std::string result;
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t c = units[i];
        if (isHighSurrogate(c) && i + 1 < units.size() && isLowSurrogate(units[i + 1])) {
            c = 0x10000 + ((c - 0xD800) << 10) + (units[++i] - 0xDC00);
        }
        appendUtf8(result, c);
    }
    return result;
}

// Keys

std::string escapedKeyUnit(char32_t unit) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    return unit > 0xFF ? "%U" + hex(unit, 4, kDigits) : "%" + hex(unit, 2, kDigits);
}

/// The number in exactly `count` hexadecimal digits at `start`.
std::optional<char32_t> hexNumber(std::u32string_view text, std::size_t start, std::size_t count) {
    if (start + count > text.size()) return std::nullopt;
    char32_t value = 0;
    for (const char32_t c : text.substr(start, count)) {
        const std::optional<char32_t> digit = hexDigit(c);
        if (!digit) return std::nullopt;
        value = value << 4 | *digit;
    }
    return value;
}

// Values

/// Writes the characters of one value.
class ValueEscaper {
public:
    /// With `asciiOnly` no character above U+00FF may come.
    explicit ValueEscaper(bool asciiOnly) : asciiOnly_(asciiOnly) {}

    void add(char32_t c) {
        if (c == U';' || c == U',' || c == U'=') needsQuotes_ = true;
        if (afterNumber_ && hexDigit(c)) return addNumber(c);
        afterNumber_ = false;
        const std::size_t letter = c < 0x80 ? kEscapedCharacters.find(static_cast<char>(c)) : std::string_view::npos;
        if (c == 0) {
            result_ += "\\0";
            afterNumber_ = true;
        } else if (letter != std::string_view::npos && c != U'?' && c != U'\'') {
            result_ += '\\';
            result_ += kEscapeLetters[letter];
        } else if (c <= 0x1F || (c >= 0x7F && asciiOnly_)) {
            addNumber(c);
        } else {
            appendUtf8(result_, c);
        }
    }

    [[nodiscard]] std::string finished() && {
        const bool atBlank = !result_.empty() && (result_.front() == ' ' || result_.back() == ' ');
        return needsQuotes_ || atBlank ? '"' + result_ + '"' : std::move(result_);
    }

private:
    void addNumber(char32_t c) {
        result_ += "\\x" + hex(c, 1, "0123456789abcdef");
        afterNumber_ = true;  // a digit right behind would be read as part of the number
    }

    bool asciiOnly_;
    bool needsQuotes_ = false;
    bool afterNumber_ = false;
    std::string result_;
};

/// Reads the characters of one value.
class ValueReader {
public:
    explicit ValueReader(std::string_view escaped) : text_(codePoints(escaped)) {}

    /// None for a list.
    [[nodiscard]] std::optional<std::string> read() {
        skipBlanks();
        while (at_ < text_.size()) {
            const char32_t c = text_[at_++];
            if (c == U',' && !inQuotes_) return std::nullopt;
            if (c == U'\\') {
                readEscape();
            } else if (c == U'"') {
                readQuote();
            } else {
                units_ += c;
            }
        }
        if (!wasQuoted_) chopBlanks();
        return utf8FromUnits(units_);
    }

private:
    static bool isBlank(char32_t c) { return c == U' ' || c == U'\t'; }

    void skipBlanks() {
        while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
    }

    void chopBlanks() {
        while (units_.size() > firmSize_ && isBlank(units_.back())) units_.pop_back();
    }

    void readQuote() {
        wasQuoted_ = true;
        inQuotes_ = !inQuotes_;
        if (!inQuotes_) skipBlanks();
    }

    void readEscape() {
        if (at_ == text_.size()) return;
        const char32_t c = text_[at_++];
        const std::size_t letter = c < 0x80 ? kEscapeLetters.find(static_cast<char>(c)) : std::string_view::npos;
        if (letter != std::string_view::npos) {
            units_ += static_cast<char32_t>(kEscapedCharacters[letter]);
        } else if (c == U'x' && at_ < text_.size() && hexDigit(text_[at_])) {
            readNumber(16);
        } else if (c >= U'0' && c <= U'7') {
            --at_;
            readNumber(8);
        }
        firmSize_ = units_.size();
    }

    void readNumber(char32_t base) {
        char32_t value = 0;
        for (; at_ < text_.size(); ++at_) {
            const std::optional<char32_t> digit = hexDigit(text_[at_]);
            if (!digit || *digit >= base) break;
            value = (value * base + *digit) & 0xFFFF;
        }
        units_ += value;
    }

    std::u32string text_;
    std::u32string units_;
    std::size_t at_ = 0;
    std::size_t firmSize_ = 0;  // what stands before came of escapes: blanks there are meant
    bool inQuotes_ = false;
    bool wasQuoted_ = false;
};

}  // namespace

std::string escapedIniKey(std::string_view key) {
    std::string result;
    for (const char32_t c : codePoints(key)) {
        if (isAsciiAlphanumeric(c) || c == U'_' || c == U'-' || c == U'.') {
            result += static_cast<char>(c);
        } else if (c > 0xFFFF) {
            result += escapedKeyUnit(0xD800 + ((c - 0x10000) >> 10));
            result += escapedKeyUnit(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            result += escapedKeyUnit(c);
        }
    }
    return result;
}

std::string unescapedIniKey(std::string_view escaped) {
    const std::u32string text = codePoints(escaped);
    std::u32string units;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isLong = i + 1 < text.size() && text[i + 1] == U'U';
        const std::size_t start = i + (isLong ? 2 : 1);
        const std::size_t count = isLong ? 4 : 2;
        const std::optional<char32_t> unit = text[i] == U'%' ? hexNumber(text, start, count) : std::nullopt;
        if (unit) i = start + count - 1;
        units += unit ? *unit : text[i] == U'\\' ? U'/' : text[i];
    }
    return utf8FromUnits(units);
}

std::string escapedIniText(std::string_view text) {
    std::string marked(text);
    if (text.contains('\0')) {
        marked = std::string(kIniStringMark) + marked + ')';
    } else if (text.starts_with('@')) {
        marked.insert(0, 1, '@');
    }
    ValueEscaper escaper(false);
    for (const char32_t c : codePoints(marked)) escaper.add(c);
    return std::move(escaper).finished();
}

std::string escapedIniData(const Bytes& bytes) {
    ValueEscaper escaper(true);
    for (const char c : kIniDataMark) escaper.add(static_cast<unsigned char>(c));
    for (const std::uint8_t byte : bytes.data) escaper.add(byte);
    escaper.add(U')');
    return std::move(escaper).finished();
}

std::optional<std::string> unescapedIniValue(std::string_view escaped) { return ValueReader(escaped).read(); }

}  // namespace tessary
