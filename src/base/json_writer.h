#pragma once

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

#include "base/date.h"

namespace tessary {

enum class JsonLayout { compact, pretty };
enum class JsonKeyOrder { declared, sorted };
enum class JsonDates { referenceSeconds, iso8601 };

/// How records are written and how their dates are read.
struct JsonFormat {
    JsonLayout layout = JsonLayout::compact;
    JsonKeyOrder keys = JsonKeyOrder::declared;
    JsonDates dates = JsonDates::referenceSeconds;
};

/// The library's own files: compact, keys as declared, dates as seconds since 2001-01-01 UTC.
inline constexpr JsonFormat kLibraryFormat{};

/// Exports and the automatic backup: for people and other programs to read.
inline constexpr JsonFormat kExportFormat{JsonLayout::pretty, JsonKeyOrder::sorted, JsonDates::iso8601};

/// Writes one JSON document into one growing buffer. The caller keeps keys and values in a valid order.
/// A value that JSON cannot carry is refused once, at `finish`.
class JsonWriter {
public:
    explicit JsonWriter(JsonFormat format = kLibraryFormat) : format_(format) {}

    [[nodiscard]] const JsonFormat& format() const { return format_; }

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    /// The key of the next value. `name` is escaped like any string.
    void key(std::string_view name);
    /// A key of letters and digits, as records have them: nothing is escaped.
    void plainKey(std::string_view name);

    void null();
    void boolean(bool value);
    void integer(std::int64_t value);
    /// The shortest text that reads back equal. NaN and infinity are refused.
    void number(double value);
    /// Malformed UTF-8 is written as U+FFFD: one bad byte must never keep a whole library from being saved.
    void string(std::string_view value);
    /// In the format's own form. A moment that ISO 8601 cannot carry is written as a number, which reading understands:
    /// one odd date must not keep a library from being exported.
    void date(Date value);

    /// One value that is JSON already.
    void raw(std::string_view json);

    /// The document, or why it could not be written. The writer is empty afterwards.
    [[nodiscard]] std::expected<std::string, std::string> finish();

    /// Bytes written so far.
    [[nodiscard]] std::size_t size() const { return text_.size(); }
    void reserve(std::size_t bytes) { text_.reserve(bytes); }

private:
    void open(char bracket);
    void close(char bracket);
    void beforeValue();
    void newLine();
    void quoted(std::string_view value);
    void refuse(std::string_view reason);

    JsonFormat format_;
    std::string text_;
    std::string refusal_;
    std::size_t depth_ = 0;
    bool needsComma_ = false;
    bool afterKey_ = false;
};

}  // namespace tessary
