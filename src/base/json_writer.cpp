#include "base/json_writer.h"

#include <simdjson.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

#include "base/text.h"

namespace tessary {
namespace {

/// For each byte: 0 when it stands as it is, the letter of its short escape, or 'u' for \u00XX.
constexpr std::array<char, 256> kEscapes = [] {
    std::array<char, 256> table{};
    for (std::size_t i = 0; i < 0x20; ++i) table[i] = 'u';
    table['"'] = '"';
    table['\\'] = '\\';
    table['\b'] = 'b';
    table['\f'] = 'f';
    table['\n'] = 'n';
    table['\r'] = 'r';
    table['\t'] = 't';
    return table;
}();

constexpr double kLargestPlainInteger = 1e15;

/// Whether one of the eight bytes from `text` on has an escape. Looks at all eight at once, each in its own lane of a
/// word; long texts have few escapes.
bool hasEscapeInEight(const char* text) {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    const auto laneBelow = [](std::uint64_t lanes, unsigned limit) { return (lanes - kOnes * limit) & ~lanes; };
    const std::uint64_t found =
        laneBelow(word, 0x20) | laneBelow(word ^ kOnes * '"', 1) | laneBelow(word ^ kOnes * '\\', 1);
    return (found & kHighBits) != 0;
}

}  // namespace

void JsonWriter::newLine() {
    if (format_.layout == JsonLayout::compact) return;
    text_ += '\n';
    text_.append(depth_ * 2, ' ');
}

void JsonWriter::beforeValue() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (needsComma_) text_ += ',';
    if (depth_ > 0) newLine();
}

void JsonWriter::open(char bracket) {
    beforeValue();
    text_ += bracket;
    ++depth_;
    needsComma_ = false;
}

void JsonWriter::close(char bracket) {
    --depth_;
    if (needsComma_) newLine();
    text_ += bracket;
    needsComma_ = true;
}

void JsonWriter::key(std::string_view name) {
    beforeValue();
    quoted(name);
    text_ += format_.layout == JsonLayout::compact ? ":" : ": ";
    afterKey_ = true;
}

void JsonWriter::plainKey(std::string_view name) {
    beforeValue();
    text_ += '"';
    text_ += name;
    text_ += format_.layout == JsonLayout::compact ? "\":" : "\": ";
    afterKey_ = true;
}

void JsonWriter::null() {
    beforeValue();
    text_ += "null";
    needsComma_ = true;
}

void JsonWriter::boolean(bool value) {
    beforeValue();
    text_ += value ? "true" : "false";
    needsComma_ = true;
}

void JsonWriter::integer(std::int64_t value) {
    beforeValue();
    std::array<char, 24> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    text_.append(digits.data(), end);
    needsComma_ = true;
}

void JsonWriter::number(double value) {
    if (!std::isfinite(value)) {
        refuse("a number that is not finite");
        return null();
    }
    if (std::fabs(value) < kLargestPlainInteger && value == std::trunc(value)) {
        if (value != 0 || !std::signbit(value)) return integer(static_cast<std::int64_t>(value));
        beforeValue();
        text_ += "-0.0";  // "-0" would read back as the integer 0 and lose its sign
    } else {
        beforeValue();
        // Readers take a long run of digits without an exponent for an integer, which may not fit one.
        const bool large = std::fabs(value) >= kLargestPlainInteger;
        std::array<char, 32> digits;
        char* const last = digits.data() + digits.size();
        const auto [end, error] = large ? std::to_chars(digits.data(), last, value, std::chars_format::scientific)
                                        : std::to_chars(digits.data(), last, value);
        text_.append(digits.data(), end);
    }
    needsComma_ = true;
}

void JsonWriter::string(std::string_view value) {
    beforeValue();
    quoted(value);
    needsComma_ = true;
}

void JsonWriter::date(Date value) {
    const bool asText = format_.dates == JsonDates::iso8601;
    if (const std::optional<std::string> text = asText ? formatIso8601(value) : std::nullopt) return string(*text);
    number(value.seconds);
}

void JsonWriter::raw(std::string_view json) {
    beforeValue();
    text_ += json;
    needsComma_ = true;
}

void JsonWriter::quoted(std::string_view value) {
    constexpr std::string_view kHex = "0123456789abcdef";
    text_ += '"';
    std::size_t start = 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
        while (i + 8 < value.size() && !hasEscapeInEight(value.data() + i)) i += 8;
        const auto byte = static_cast<unsigned char>(value[i]);
        const char escape = kEscapes[byte];
        if (escape == 0) [[likely]]
            continue;
        text_.append(value, start, i - start);
        text_ += '\\';
        text_ += escape;
        if (escape == 'u') {
            text_ += "00";
            text_ += kHex[byte >> 4];
            text_ += kHex[byte & 0x0F];
        }
        start = i + 1;
    }
    text_.append(value, start, value.size() - start);
    text_ += '"';
}

void JsonWriter::refuse(std::string_view reason) {
    if (refusal_.empty()) refusal_ = reason;
}

std::expected<std::string, std::string> JsonWriter::finish() {
    std::string text = std::exchange(text_, {});
    if (!refusal_.empty()) return std::unexpected("cannot write " + std::exchange(refusal_, {}));
    depth_ = 0;
    needsComma_ = afterKey_ = false;
    if (!simdjson::validate_utf8(text)) return scrubbedUtf8(text);
    return text;
}

}  // namespace tessary
