#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ai/ai_error.h"
#include "base/json_reader.h"

/// Models write JSON loosely: with fences around it, numbers as text, null for nothing. What can be understood is.
namespace tessary {

/// What `read` makes of the root of a provider's reply, which is strict JSON.
template <class Read>
auto readBody(const std::string& body, Read read) -> decltype(read(std::declval<JsonValue>())) {
    try {
        const JsonDocument document(body);
        return read(document.root());
    } catch (const JsonMismatch&) {
        return std::unexpected(AIError::badResponse("it didn't return valid JSON"));
    }
}

/// The JSON of a model's answer, prose and code fences around it left out. Null when there is none.
[[nodiscard]] std::unique_ptr<JsonDocument> parseReply(const std::string& text);

/// Under the first of `keys` that holds a text, a number or a truth value; trimmed, empty when none does.
[[nodiscard]] std::string textIn(JsonValue object, std::initializer_list<std::string_view> keys);
/// Under the first of `keys` that holds a whole number, or the digits of one.
[[nodiscard]] std::optional<std::int64_t> integerIn(JsonValue object, std::initializer_list<std::string_view> keys);
/// A number, or the digits of one; finite.
[[nodiscard]] std::optional<double> numberIn(JsonValue object, std::string_view key);
/// The texts of a list, trimmed, without empty ones; none when it is no list.
[[nodiscard]] std::vector<std::string> textsIn(JsonValue object, std::initializer_list<std::string_view> keys);

}  // namespace tessary
