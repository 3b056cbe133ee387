#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/function_ref.h"
#include "base/json_writer.h"
#include "base/uuid.h"

namespace tessary {

/// What reading needs beyond the text: for defaults that are not constants, and for the form of dates.
struct ReadContext {
    Date now;                          ///< the moment of load
    std::function<Uuid()> freshId;     ///< a new identifier for a record that lacks one
    JsonDates dates = JsonDates::referenceSeconds;
};

/// Why a document could not be read.
struct DecodingError {
    std::string path;     ///< from the root to the place, as in "[12].date"; empty at the root
    std::string problem;  ///< as in "missing" or "expected a number"

    /// "entries.json: [12].date: missing".
    [[nodiscard]] std::string describe(std::string_view fileName) const;
};

/// Thrown while a document is walked; the path grows on the way out. Callers outside base/ see a DecodingError instead.
class JsonMismatch : public std::exception {
public:
    explicit JsonMismatch(std::string problem) : error_{.path = {}, .problem = std::move(problem)} {}

    [[nodiscard]] const char* what() const noexcept override { return error_.problem.c_str(); }
    [[nodiscard]] const DecodingError& error() const { return error_; }

    void insideKey(std::string_view key);
    void insideElement(std::size_t index);

private:
    DecodingError error_;
};

enum class JsonKind { null, boolean, number, string, array, object };

/// A value inside a JsonDocument, valid for as long as the document. Every `as…` throws JsonMismatch on another type.
class JsonValue {
public:
    [[nodiscard]] JsonKind kind() const;
    [[nodiscard]] bool isNull() const;
    [[nodiscard]] bool isNumber() const;
    [[nodiscard]] bool asBool() const;
    /// Also reads a whole number that is written with a fraction or an exponent ("1.0").
    [[nodiscard]] std::int64_t asInteger() const;
    [[nodiscard]] double asNumber() const;
    [[nodiscard]] std::string_view asString() const;

    /// Calls `visit` with each element; a JsonMismatch thrown by it learns its index.
    void forEachElement(FunctionRef<void(JsonValue)> visit) const;
    /// The number of elements of an array.
    [[nodiscard]] std::size_t elementCount() const;
    /// Calls `visit` with each key and value, in the document's order; a JsonMismatch thrown by it learns its key.
    void forEachMember(FunctionRef<void(std::string_view, JsonValue)> visit) const;

    /// The first member of this name; absent when there is none, or this is no object.
    [[nodiscard]] std::optional<JsonValue> member(std::string_view key) const;
    /// The first element of an array; absent when there is none, or this is no array.
    [[nodiscard]] std::optional<JsonValue> firstElement() const;

    /// Throws when an object inside this value, at any depth, has a key twice.
    void requireUniqueKeys() const;

private:
    friend class JsonDocument;
    JsonValue(const void* document, std::size_t position) : document_(document), position_(position) {}

    const void* document_;
    std::size_t position_;
};

/// Writes a value that was read, as it was read. A number that is no 64-bit integer goes through a double.
void writeValue(JsonWriter& writer, JsonValue value);

/// A parsed and fully validated JSON text: UTF-8, grammar, numbers, depth, nothing but white space at the end.
/// A byte-order mark is skipped.
class JsonDocument {
public:
    /// Throws JsonMismatch when the text is no JSON. Reads without a copy when the string has
    /// `kPadding` bytes of spare capacity.
    explicit JsonDocument(const std::string& text);
    ~JsonDocument();
    JsonDocument(const JsonDocument&) = delete;
    JsonDocument& operator=(const JsonDocument&) = delete;

    [[nodiscard]] JsonValue root() const;

    static constexpr std::size_t kPadding = 64;

private:
    struct Parser;
    std::unique_ptr<Parser> parser_;
};

}  // namespace tessary
