#include "base/json_reader.h"

#include <fmt/format.h>
#include <simdjson.h>

#include <bit>
#include <cmath>
#include <optional>
#include <unordered_set>

#include "base/text.h"

namespace tessary {
namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

// A JsonValue is the two words of a DOM element, so that this header's users need not see the parser's.
static_assert(sizeof(element) == sizeof(void*) + sizeof(std::size_t));
static_assert(std::is_trivially_copyable_v<element>);

struct Words {
    const void* document;
    std::size_t position;
};

element elementOf(const void* document, std::size_t position) {
    return std::bit_cast<element>(Words{document, position});
}

Words wordsOf(element value) { return std::bit_cast<Words>(value); }

/// A double that is whole and inside the range of 64-bit integers.
std::optional<std::int64_t> wholeNumber(double value) {
    constexpr double kLimit = 9223372036854775808.0;  // 2^63
    if (value != std::trunc(value) || value < -kLimit || value >= kLimit) return std::nullopt;
    return static_cast<std::int64_t>(value);
}

void requireUniqueKeysIn(element value) {
    if (value.type() == element_type::ARRAY) {
        for (const element child : simdjson::dom::array(value)) requireUniqueKeysIn(child);
    } else if (value.type() == element_type::OBJECT) {
        std::unordered_set<std::string_view> seen;
        for (const auto& [key, child] : simdjson::dom::object(value)) {
            if (!seen.insert(key).second) throw JsonMismatch(fmt::format("the key “{}” stands twice", key));
            requireUniqueKeysIn(child);
        }
    }
}

}  // namespace

std::string DecodingError::describe(std::string_view fileName) const {
    return path.empty() ? fmt::format("{}: {}", fileName, problem) : fmt::format("{}: {}: {}", fileName, path, problem);
}

void JsonMismatch::insideKey(std::string_view key) {
    const bool needsDot = !error_.path.empty() && error_.path.front() != '[';
    error_.path = fmt::format("{}{}{}", key, needsDot ? "." : "", error_.path);
}

void JsonMismatch::insideElement(std::size_t index) {
    const bool needsDot = !error_.path.empty() && error_.path.front() != '[';
    error_.path = fmt::format("[{}]{}{}", index, needsDot ? "." : "", error_.path);
}

JsonKind JsonValue::kind() const {
    switch (elementOf(document_, position_).type()) {
        case element_type::NULL_VALUE: return JsonKind::null;
        case element_type::BOOL: return JsonKind::boolean;
        case element_type::STRING: return JsonKind::string;
        case element_type::ARRAY: return JsonKind::array;
        case element_type::OBJECT: return JsonKind::object;
        default: return JsonKind::number;
    }
}

bool JsonValue::isNull() const { return elementOf(document_, position_).is_null(); }

bool JsonValue::isNumber() const { return elementOf(document_, position_).is_number(); }

bool JsonValue::asBool() const {
    bool value = false;
    if (elementOf(document_, position_).get(value) != simdjson::SUCCESS) throw JsonMismatch("expected true or false");
    return value;
}

std::int64_t JsonValue::asInteger() const {
    const element self = elementOf(document_, position_);
    std::int64_t value = 0;
    if (self.get(value) == simdjson::SUCCESS) return value;
    double number = 0;
    if (self.is_number() && self.get(number) == simdjson::SUCCESS) {
        if (const std::optional<std::int64_t> whole = wholeNumber(number)) return *whole;
    }
    throw JsonMismatch("expected a whole number");
}

double JsonValue::asNumber() const {
    double value = 0;
    if (elementOf(document_, position_).get(value) != simdjson::SUCCESS) throw JsonMismatch("expected a number");
    return value;
}

std::string_view JsonValue::asString() const {
    std::string_view value;
    if (elementOf(document_, position_).get(value) != simdjson::SUCCESS) throw JsonMismatch("expected a text");
    return value;
}

void JsonValue::forEachElement(FunctionRef<void(JsonValue)> visit) const {
    simdjson::dom::array array;
    if (elementOf(document_, position_).get(array) != simdjson::SUCCESS) throw JsonMismatch("expected a list");
    std::size_t index = 0;
    try {
        for (const element child : array) {
            const Words words = wordsOf(child);
            visit(JsonValue(words.document, words.position));
            ++index;
        }
    } catch (JsonMismatch& mismatch) {
        mismatch.insideElement(index);
        throw;
    }
}

std::size_t JsonValue::elementCount() const {
    simdjson::dom::array array;
    if (elementOf(document_, position_).get(array) != simdjson::SUCCESS) throw JsonMismatch("expected a list");
    return array.size();
}

void JsonValue::forEachMember(FunctionRef<void(std::string_view, JsonValue)> visit) const {
    simdjson::dom::object object;
    if (elementOf(document_, position_).get(object) != simdjson::SUCCESS) throw JsonMismatch("expected an object");
    std::string_view current;
    try {
        for (auto member = object.begin(); member != object.end(); ++member) {
            current = member.key();
            const Words words = wordsOf(member.value());
            visit(current, JsonValue(words.document, words.position));
        }
    } catch (JsonMismatch& mismatch) {
        mismatch.insideKey(current);
        throw;
    }
}

std::optional<JsonValue> JsonValue::member(std::string_view key) const {
    simdjson::dom::object object;
    element found;
    if (elementOf(document_, position_).get(object) != simdjson::SUCCESS) return std::nullopt;
    if (object.at_key(key).get(found) != simdjson::SUCCESS) return std::nullopt;
    const Words words = wordsOf(found);
    return JsonValue(words.document, words.position);
}

std::optional<JsonValue> JsonValue::firstElement() const {
    simdjson::dom::array array;
    if (elementOf(document_, position_).get(array) != simdjson::SUCCESS) return std::nullopt;
    if (array.begin() == array.end()) return std::nullopt;
    const Words words = wordsOf(*array.begin());
    return JsonValue(words.document, words.position);
}

void writeValue(JsonWriter& writer, JsonValue value) {
    switch (value.kind()) {
        case JsonKind::null: return writer.null();
        case JsonKind::boolean: return writer.boolean(value.asBool());
        case JsonKind::string: return writer.string(value.asString());
        case JsonKind::number:
            if (const auto whole = wholeNumber(value.asNumber())) return writer.integer(value.asInteger());
            return writer.number(value.asNumber());
        case JsonKind::array:
            writer.beginArray();
            value.forEachElement([&](JsonValue element) { writeValue(writer, element); });
            return writer.endArray();
        case JsonKind::object:
            writer.beginObject();
            value.forEachMember([&](std::string_view key, JsonValue member) {
                writer.key(key);
                writeValue(writer, member);
            });
            return writer.endObject();
    }
}

void JsonValue::requireUniqueKeys() const { requireUniqueKeysIn(elementOf(document_, position_)); }

struct JsonDocument::Parser {
    simdjson::dom::parser parser;
    element root;
};

JsonDocument::JsonDocument(const std::string& text) : parser_(std::make_unique<Parser>()) {
    const std::string_view content = withoutByteOrderMark(text);
    const bool padded = text.capacity() - text.size() >= simdjson::SIMDJSON_PADDING;
    const simdjson::error_code error =
        parser_->parser.parse(content.data(), content.size(), !padded).get(parser_->root);
    if (error != simdjson::SUCCESS) {
        throw JsonMismatch(fmt::format("not valid JSON ({})", simdjson::error_message(error)));
    }
}

JsonDocument::~JsonDocument() = default;

JsonValue JsonDocument::root() const {
    const Words words = wordsOf(parser_->root);
    return {words.document, words.position};
}

}  // namespace tessary
