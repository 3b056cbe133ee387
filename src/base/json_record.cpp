#include "base/json_record.h"

#include <limits>

namespace tessary {

void readValue(JsonValue json, const ReadContext&, int& value) {
    const std::int64_t wide = json.asInteger();
    if (wide < std::numeric_limits<int>::min() || wide > std::numeric_limits<int>::max()) {
        throw JsonMismatch("number out of range");
    }
    value = static_cast<int>(wide);
}

void readValue(JsonValue json, const ReadContext&, Uuid& value) {
    const std::optional<Uuid> read = Uuid::parse(json.asString());
    if (!read) throw JsonMismatch("expected an identifier");
    value = *read;
}

void readValue(JsonValue json, const ReadContext&, Bytes& value) {
    std::optional<Bytes> read = decodeBase64(json.asString());
    if (!read) throw JsonMismatch("expected base64 data");
    value = std::move(*read);
}

// A library file or one of its backups can be imported too: where ISO 8601 is meant, seconds are understood.
void readValue(JsonValue json, const ReadContext& context, Date& value) {
    if (context.dates == JsonDates::referenceSeconds || json.isNumber()) {
        value = Date{json.asNumber()};
        return;
    }
    const std::optional<Date> read = parseIso8601(json.asString());
    if (!read) throw JsonMismatch("expected an ISO 8601 date");
    value = *read;
}

}  // namespace tessary
