#include "study/deck_markup.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "base/text.h"

namespace tessary {

namespace {

constexpr auto kNone = std::string_view::npos;
constexpr std::size_t kLongestEntity = 12;

bool isAsciiDigit(char c) { return c >= '0' && c <= '9'; }
bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

constexpr auto kNamedEntities = std::to_array<std::pair<std::string_view, char32_t>>({
    {"amp", U'&'},         {"lt", U'<'},          {"gt", U'>'},          {"quot", U'"'},        {"apos", U'\''},
    {"nbsp", U'\u00A0'},   {"ndash", U'\u2013'},  {"mdash", U'\u2014'},  {"hellip", U'\u2026'}, {"lsquo", U'\u2018'},
    {"rsquo", U'\u2019'},  {"ldquo", U'\u201C'},  {"rdquo", U'\u201D'},  {"bdquo", U'\u201E'},  {"laquo", U'\u00AB'},
    {"raquo", U'\u00BB'},  {"auml", U'\u00E4'},   {"ouml", U'\u00F6'},   {"uuml", U'\u00FC'},   {"Auml", U'\u00C4'},
    {"Ouml", U'\u00D6'},   {"Uuml", U'\u00DC'},   {"szlig", U'\u00DF'},  {"eacute", U'\u00E9'}, {"egrave", U'\u00E8'},
    {"agrave", U'\u00E0'}, {"ccedil", U'\u00E7'}, {"ntilde", U'\u00F1'}, {"deg", U'\u00B0'},    {"middot", U'\u00B7'},
    {"times", U'\u00D7'},  {"divide", U'\u00F7'}, {"plusmn", U'\u00B1'}, {"micro", U'\u00B5'},  {"euro", U'\u20AC'},
    {"pound", U'\u00A3'},  {"copy", U'\u00A9'},   {"reg", U'\u00AE'},    {"trade", U'\u2122'},  {"sect", U'\u00A7'},
    {"bull", U'\u2022'},   {"rarr", U'\u2192'},   {"larr", U'\u2190'},   {"rArr", U'\u21D2'},   {"hArr", U'\u21D4'},
    {"le", U'\u2264'},     {"ge", U'\u2265'},     {"ne", U'\u2260'},     {"asymp", U'\u2248'},  {"infin", U'\u221E'},
});

std::optional<char32_t> numericEntity(std::string_view digits) {
    const bool hexadecimal = digits.starts_with('x') || digits.starts_with('X');
    if (hexadecimal) digits.remove_prefix(1);
    std::uint32_t value = 0;
    const auto* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, hexadecimal ? 16 : 10);
    if (digits.empty() || stop != end || error == std::errc::invalid_argument) return std::nullopt;
    if (error != std::errc() || value == 0) return U'\uFFFD';
    return static_cast<char32_t>(value);
}

std::optional<char32_t> entityNamed(std::string_view name) {
    if (name.starts_with('#')) return numericEntity(name.substr(1));
    const auto* const found = std::ranges::find(kNamedEntities, name, &std::pair<std::string_view, char32_t>::first);
    if (found == kNamedEntities.end()) return std::nullopt;
    return found->second;
}

/// The lower-case name of a tag, with the slash of a closing one: `tag` is what stands between the angle brackets.
std::string tagName(std::string_view tag) {
    std::size_t length = tag.starts_with('/') ? 1 : 0;
    while (length < tag.size() && (isAsciiLetter(tag[length]) || isAsciiDigit(tag[length]))) ++length;
    return asciiLowered(tag.substr(0, length));
}

}  // namespace

std::optional<Entity> leadingEntity(std::string_view text) {
    const auto end = text.substr(0, kLongestEntity).find(';');
    if (!text.starts_with('&') || end == kNone) return std::nullopt;
    const auto codePoint = entityNamed(text.substr(1, end - 1));
    if (!codePoint) return std::nullopt;
    return Entity{.codePoint = *codePoint, .length = end + 1};
}

bool beginsTag(std::string_view text) {
    return text.size() > 1 && text[0] == '<' && (isAsciiLetter(text[1]) || text[1] == '/' || text[1] == '!');
}

std::string decodedEntities(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        if (const auto entity = leadingEntity(text)) {
            appendUtf8(result, entity->codePoint);
            text.remove_prefix(entity->length);
        } else {
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return withPlainLineBreaks(result);
}

std::string withoutTags(std::string_view text) {
    const auto lastTagEnd = text.rfind('>');
    std::string result;
    bool breakPending = false;
    const auto emit = [&](char c) {
        if (breakPending) result += '\n';
        breakPending = false;
        result += c;
    };
    for (std::size_t i = 0; i < text.size();) {
        if (lastTagEnd == kNone || i > lastTagEnd || !beginsTag(text.substr(i))) {
            emit(text[i++]);
            continue;
        }
        const auto end = text.find('>', i);
        const auto name = tagName(text.substr(i + 1, end - i - 1));
        if (name == "br") emit('\n');
        if (name == "/p" || name == "/div") breakPending = true;
        i = end + 1;
    }
    return result;
}

std::string withPlainLineBreaks(std::string_view text) {
    return replacedAll(replacedAll(text, "\r\n", "\n"), "\r", "\n");
}

}  // namespace tessary
