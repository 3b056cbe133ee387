#include "ai/reply_json.h"

#include <cmath>

#include "base/text.h"

namespace tessary {
namespace {

std::unique_ptr<JsonDocument> parsed(const std::string& text) {
    try {
        return std::make_unique<JsonDocument>(text);
    } catch (const JsonMismatch&) {
        return nullptr;
    }
}

std::string textOf(JsonValue value) {
    switch (value.kind()) {
        case JsonKind::string: return std::string(trimmed(value.asString()));
        case JsonKind::boolean: return value.asBool() ? "true" : "false";
        case JsonKind::number: {
            JsonWriter writer;
            writeValue(writer, value);
            return writer.finish().value_or("");
        }
        default: return {};
    }
}

std::optional<double> numberOf(JsonValue value) {
    std::optional<double> number;
    if (value.kind() == JsonKind::number) number = value.asNumber();
    if (value.kind() == JsonKind::string) number = parseNumber<double>(trimmed(value.asString()));
    return number && std::isfinite(*number) ? number : std::nullopt;
}

}  // namespace

std::unique_ptr<JsonDocument> parseReply(const std::string& text) {
    if (auto whole = parsed(text)) return whole;
    const std::size_t begin = text.find('{');
    const std::size_t end = text.rfind('}');
    if (begin == std::string::npos || end == std::string::npos || end < begin) return nullptr;
    return parsed(text.substr(begin, end - begin + 1));
}

std::string textIn(JsonValue object, std::initializer_list<std::string_view> keys) {
    for (const std::string_view key : keys) {
        const std::optional<JsonValue> value = object.member(key);
        if (std::string text = value ? textOf(*value) : ""; !text.empty()) return text;
    }
    return {};
}

std::optional<double> numberIn(JsonValue object, std::string_view key) {
    const std::optional<JsonValue> value = object.member(key);
    return value ? numberOf(*value) : std::nullopt;
}

std::optional<std::int64_t> integerIn(JsonValue object, std::initializer_list<std::string_view> keys) {
    constexpr double kLargest = 1e9;  // indices and page numbers
    for (const std::string_view key : keys) {
        const std::optional<double> number = numberIn(object, key);
        if (number && *number == std::trunc(*number) && std::fabs(*number) <= kLargest) {
            return static_cast<std::int64_t>(*number);
        }
    }
    return std::nullopt;
}

std::vector<std::string> textsIn(JsonValue object, std::initializer_list<std::string_view> keys) {
    std::vector<std::string> texts;
    for (const std::string_view key : keys) {
        const std::optional<JsonValue> list = object.member(key);
        if (!list || list->kind() != JsonKind::array) continue;
        list->forEachElement([&](JsonValue element) {
            if (std::string text = textOf(element); !text.empty()) texts.push_back(std::move(text));
        });
        break;
    }
    return texts;
}

}  // namespace tessary
