#pragma once

#include <algorithm>
#include <array>
#include <bitset>
#include <concepts>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/bytes.h"
#include "base/json_reader.h"
#include "base/json_writer.h"
#include "base/uuid.h"

/// Records and their JSON form. A record states its fields once:
///
///     template <> struct Record<Notebook> {
///         static constexpr auto fields = std::tuple{
///             required("id", &Notebook::id),
///             withDefault("icon", &Notebook::icon, "folder.fill"),
///             tolerant("material", &Notebook::material, CoverMaterial::classic),
///             optional("emoji", &Notebook::emoji),
///         };
///     };
///
/// and an enumeration its names:
///
///     template <> struct EnumNames<CoverMaterial> {
///         static constexpr auto names = std::array{std::pair{CoverMaterial::classic, "classic"}, …};
///     };
///
/// Reading, writing and hashing follow from the table. The written order is the order of the table. Null means missing
/// for every field that is not required; unknown keys are passed over; a key that stands twice is an error.
namespace tessary {

template <class T>
struct Record;

template <class E>
struct EnumNames;

template <class T>
concept HasRecord = requires { Record<T>::fields; };

template <class E>
concept HasEnumNames = requires { EnumNames<E>::names; };

// ---- enumerations -----------------------------------------------------------------------------------------------

template <HasEnumNames E>
[[nodiscard]] constexpr std::string_view enumName(E value) {
    for (const auto& [candidate, name] : EnumNames<E>::names) {
        if (candidate == value) return name;
    }
    return {};
}

template <HasEnumNames E>
[[nodiscard]] constexpr std::optional<E> enumNamed(std::string_view text) {
    for (const auto& [candidate, name] : EnumNames<E>::names) {
        if (text == name) return candidate;
    }
    return std::nullopt;
}

// ---- fields -----------------------------------------------------------------------------------------------------

enum class Presence {
    required,   ///< missing or null fails the record
    defaulted,  ///< missing or null gives the default
    tolerant,   ///< missing, null, an unknown value and a wrong type give the default
    optional,   ///< missing or null is absent; left out when absent
};

/// Applied after reading; may correct the value or throw JsonMismatch.
struct NoRule {
    void operator()(const auto&) const {}
};

template <class T, class M, class Default, class Rule>
struct Field {
    using Owner = T;
    using Member = M;
    std::string_view key;
    M T::* member;
    Presence presence;
    Default makeDefault;
    Rule rule;
};

struct EmptyDefault {
    template <class M>
    constexpr M make(const ReadContext&) const {
        return M{};
    }
};

template <class V>
struct ConstantDefault {
    V value;
    template <class M>
    constexpr M make(const ReadContext&) const {
        return M(value);
    }
};

template <class F>
struct ComputedDefault {
    F compute;
    template <class M>
    constexpr M make(const ReadContext& context) const {
        return compute(context);
    }
};

template <class T, class M, class Rule = NoRule>
constexpr auto required(std::string_view key, M T::* member, Rule rule = {}) {
    return Field<T, M, EmptyDefault, Rule>{key, member, Presence::required, {}, rule};
}

/// The default is an empty value: "", [], {}, 0, false.
template <class T, class M>
constexpr auto withDefault(std::string_view key, M T::* member) {
    return Field<T, M, EmptyDefault, NoRule>{key, member, Presence::defaulted, {}, {}};
}

template <class T, class M, class V, class Rule = NoRule>
constexpr auto withDefault(std::string_view key, M T::* member, V value, Rule rule = {}) {
    return Field<T, M, ConstantDefault<V>, Rule>{key, member, Presence::defaulted, {value}, rule};
}

/// `compute` makes the default from the ReadContext.
template <class T, class M, class F>
constexpr auto withComputedDefault(std::string_view key, M T::* member, F compute) {
    return Field<T, M, ComputedDefault<F>, NoRule>{key, member, Presence::defaulted, {compute}, {}};
}

template <class T, class M, class V>
constexpr auto tolerant(std::string_view key, M T::* member, V value) {
    return Field<T, M, ConstantDefault<V>, NoRule>{key, member, Presence::tolerant, {value}, {}};
}

template <class T, class M>
constexpr auto optional(std::string_view key, std::optional<M> T::* member) {
    return Field<T, std::optional<M>, EmptyDefault, NoRule>{key, member, Presence::optional, {}, {}};
}

/// A rule for counters.
inline constexpr auto kNotNegative = [](const auto& value) {
    if (value < 0) throw JsonMismatch("expected 0 or more");
};

// ---- reading ----------------------------------------------------------------------------------------------------

template <HasRecord T>
T readRecord(JsonValue json, const ReadContext& context);

inline void readValue(JsonValue json, const ReadContext&, bool& value) { value = json.asBool(); }
inline void readValue(JsonValue json, const ReadContext&, double& value) { value = json.asNumber(); }
inline void readValue(JsonValue json, const ReadContext&, std::string& value) { value = json.asString(); }
inline void readValue(JsonValue json, const ReadContext&, std::int64_t& value) { value = json.asInteger(); }
void readValue(JsonValue json, const ReadContext&, int& value);
void readValue(JsonValue json, const ReadContext&, Uuid& value);
void readValue(JsonValue json, const ReadContext&, Bytes& value);
void readValue(JsonValue json, const ReadContext& context, Date& value);

template <class Tag>
void readValue(JsonValue json, const ReadContext& context, Id<Tag>& value) {
    readValue(json, context, value.uuid);
}

template <HasEnumNames E>
void readValue(JsonValue json, const ReadContext&, E& value) {
    const std::string_view text = json.asString();
    const std::optional<E> read = enumNamed<E>(text);
    if (!read) throw JsonMismatch("unknown value “" + std::string(text) + "”");
    value = *read;
}

template <HasRecord T>
void readValue(JsonValue json, const ReadContext& context, T& value) {
    value = readRecord<T>(json, context);
}

template <class V>
void readValue(JsonValue json, const ReadContext& context, std::vector<V>& values) {
    values.reserve(json.elementCount());
    json.forEachElement([&](JsonValue element) { readValue(element, context, values.emplace_back()); });
}

template <class V>
void readValue(JsonValue json, const ReadContext& context, std::map<std::string, V>& values) {
    json.forEachMember([&](std::string_view key, JsonValue element) {
        const auto [position, inserted] = values.try_emplace(std::string(key));
        if (!inserted) throw JsonMismatch("this key stands twice");
        readValue(element, context, position->second);
    });
}

template <class V>
void readValue(JsonValue json, const ReadContext& context, std::optional<V>& value) {
    readValue(json, context, value.emplace());
}

namespace detail {

template <class T>
inline constexpr std::size_t kFieldCount = std::tuple_size_v<std::remove_cvref_t<decltype(Record<T>::fields)>>;

template <class T, std::size_t I>
void applyDefault(T& record, const ReadContext& context) {
    constexpr const auto& field = std::get<I>(Record<T>::fields);
    using Member = typename std::remove_cvref_t<decltype(field)>::Member;
    record.*field.member = field.makeDefault.template make<Member>(context);
    field.rule(record.*field.member);
}

template <class T, std::size_t I>
void readField(T& record, JsonValue json, const ReadContext& context) {
    constexpr const auto& field = std::get<I>(Record<T>::fields);
    if constexpr (field.presence == Presence::required) {
        if (json.isNull()) throw JsonMismatch("missing");
    } else if (json.isNull()) {
        return applyDefault<T, I>(record, context);
    }
    if constexpr (field.presence == Presence::tolerant) {
        try {
            readValue(json, context, record.*field.member);
        } catch (const JsonMismatch&) {
            return applyDefault<T, I>(record, context);
        }
    } else {
        readValue(json, context, record.*field.member);
    }
    field.rule(record.*field.member);
}

template <class T, std::size_t I>
void fieldIsMissing(T& record, const ReadContext& context) {
    constexpr const auto& field = std::get<I>(Record<T>::fields);
    if constexpr (field.presence == Presence::required) {
        JsonMismatch mismatch("missing");
        mismatch.insideKey(field.key);
        throw mismatch;
    } else if constexpr (field.presence != Presence::optional) {
        applyDefault<T, I>(record, context);
    }
}

template <class T, std::size_t I>
void writeField(const T& record, JsonWriter& writer);

/// The table of a record as arrays of functions, so that a field is reached by its index.
template <class T>
struct FieldTable {
    static constexpr std::size_t kCount = kFieldCount<T>;

    static constexpr auto keys = std::apply(
        [](const auto&... field) { return std::array<std::string_view, kCount>{field.key...}; }, Record<T>::fields);

    /// Field indices in the order of their keys.
    static constexpr auto sortedOrder = [] {
        std::array<std::size_t, kCount> order{};
        for (std::size_t i = 0; i < kCount; ++i) order[i] = i;
        std::sort(order.begin(), order.end(), [](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
        return order;
    }();

    template <std::size_t... I>
    static constexpr auto makeReaders(std::index_sequence<I...>) {
        return std::array<void (*)(T&, JsonValue, const ReadContext&), kCount>{&readField<T, I>...};
    }
    template <std::size_t... I>
    static constexpr auto makeMissing(std::index_sequence<I...>) {
        return std::array<void (*)(T&, const ReadContext&), kCount>{&fieldIsMissing<T, I>...};
    }
    template <std::size_t... I>
    static constexpr auto makeWriters(std::index_sequence<I...>) {
        return std::array<void (*)(const T&, JsonWriter&), kCount>{&writeField<T, I>...};
    }

    static constexpr auto readers = makeReaders(std::make_index_sequence<kCount>{});
    static constexpr auto missing = makeMissing(std::make_index_sequence<kCount>{});
    /// With its type spelled out, so that a record that is only read needs no writing of its members.
    static constexpr std::array<void (*)(const T&, JsonWriter&), kCount> writers =
        makeWriters(std::make_index_sequence<kCount>{});

    /// `expected` is tried first: files list their keys in the order of the table. `kCount` for an unknown key.
    static std::size_t find(std::string_view key, std::size_t expected) {
        if (expected < kCount && keys[expected] == key) [[likely]]
            return expected;
        return static_cast<std::size_t>(std::ranges::find(keys, key) - keys.begin());
    }
};

}  // namespace detail

template <HasRecord T>
T readRecord(JsonValue json, const ReadContext& context) {
    using Table = detail::FieldTable<T>;
    T record{};
    std::bitset<Table::kCount> seen;
    std::vector<std::string_view> unknownKeys;
    std::size_t expected = 0;
    json.forEachMember([&](std::string_view key, JsonValue value) {
        const std::size_t index = Table::find(key, expected);
        if (index == Table::kCount) {
            if (std::ranges::find(unknownKeys, key) != unknownKeys.end()) throw JsonMismatch("this key stands twice");
            unknownKeys.push_back(key);
            return value.requireUniqueKeys();
        }
        if (seen[index]) throw JsonMismatch("this key stands twice");
        seen.set(index);
        expected = index + 1;
        Table::readers[index](record, value, context);
    });
    if (!seen.all()) {
        for (std::size_t i = 0; i < Table::kCount; ++i) {
            if (!seen[i]) Table::missing[i](record, context);
        }
    }
    return record;
}

/// Reads one document that is a `T` (a record, or a list or map of records) as a whole, or says what is wrong with it.
template <class T>
[[nodiscard]] std::expected<T, DecodingError> decodeJson(const std::string& text, const ReadContext& context) {
    try {
        const JsonDocument document(text);
        T value{};
        readValue(document.root(), context, value);
        return value;
    } catch (const JsonMismatch& mismatch) {
        return std::unexpected(mismatch.error());
    }
}

// ---- writing ----------------------------------------------------------------------------------------------------

template <HasRecord T>
void writeRecord(JsonWriter& writer, const T& record);

inline void writeValue(JsonWriter& writer, bool value) { writer.boolean(value); }
inline void writeValue(JsonWriter& writer, int value) { writer.integer(value); }
inline void writeValue(JsonWriter& writer, std::int64_t value) { writer.integer(value); }
inline void writeValue(JsonWriter& writer, double value) { writer.number(value); }
inline void writeValue(JsonWriter& writer, const std::string& value) { writer.string(value); }
inline void writeValue(JsonWriter& writer, const Uuid& value) { writer.string(value.toString()); }
inline void writeValue(JsonWriter& writer, const Bytes& value) { writer.string(encodeBase64(value)); }
inline void writeValue(JsonWriter& writer, Date value) { writer.date(value); }

template <class Tag>
void writeValue(JsonWriter& writer, const Id<Tag>& value) {
    writeValue(writer, value.uuid);
}

template <HasEnumNames E>
void writeValue(JsonWriter& writer, E value) {
    writer.string(enumName(value));
}

template <HasRecord T>
void writeValue(JsonWriter& writer, const T& value) {
    writeRecord(writer, value);
}

/// Writes a list with `writeElement`. The first elements tell roughly how much room a long list takes: growing the
/// buffer step by step would cost as much as writing into it.
template <class V, class F>
void writeList(JsonWriter& writer, const std::vector<V>& values, F writeElement) {
    constexpr std::size_t kSample = 64;
    constexpr std::size_t kMostReserved = 128UL * 1024 * 1024;  // the first elements may be unlike the rest
    writer.beginArray();
    const std::size_t start = writer.size();
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i == kSample) {
            const std::size_t elementSize = (writer.size() - start) / kSample + 1;
            writer.reserve(std::min(kMostReserved, writer.size() + elementSize * (values.size() + values.size() / 8)));
        }
        writeElement(values[i]);
    }
    writer.endArray();
}

template <class V>
void writeValue(JsonWriter& writer, const std::vector<V>& values) {
    writeList(writer, values, [&writer](const V& value) { writeValue(writer, value); });
}

template <class V>
void writeValue(JsonWriter& writer, const std::map<std::string, V>& values) {
    writer.beginObject();
    for (const auto& [key, value] : values) {
        writer.key(key);
        writeValue(writer, value);
    }
    writer.endObject();
}

namespace detail {

constexpr bool isPlainKey(std::string_view key) {
    return std::ranges::all_of(
        key, [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); });
}

template <class T, std::size_t I>
void writeField(const T& record, JsonWriter& writer) {
    constexpr const auto& field = std::get<I>(Record<T>::fields);
    static_assert(isPlainKey(field.key));
    const auto& value = record.*field.member;
    if constexpr (field.presence == Presence::optional) {
        if (!value) return;
        writer.plainKey(field.key);
        writeValue(writer, *value);
    } else {
        writer.plainKey(field.key);
        writeValue(writer, value);
    }
}

}  // namespace detail

/// The members of a record without the braces, for a document that adds members of its own.
template <HasRecord T>
void writeMembers(JsonWriter& writer, const T& record) {
    using Table = detail::FieldTable<T>;
    if (writer.format().keys == JsonKeyOrder::sorted) {
        for (const std::size_t index : Table::sortedOrder) Table::writers[index](record, writer);
    } else {
        for (const auto write : Table::writers) write(record, writer);
    }
}

template <HasRecord T>
void writeRecord(JsonWriter& writer, const T& record) {
    writer.beginObject();
    writeMembers(writer, record);
    writer.endObject();
}

/// The document of one value, or why it cannot be written.
template <class T>
[[nodiscard]] std::expected<std::string, std::string> encodeJson(const T& value, JsonFormat format = kLibraryFormat) {
    JsonWriter writer(format);
    writeValue(writer, value);
    return writer.finish();
}

// ---- hashing ----------------------------------------------------------------------------------------------------

inline std::size_t mixHashes(std::size_t seed, std::size_t value) {
    return seed ^ (value + 0x9E3779B97F4A7C15ULL + (seed << 6) + (seed >> 2));
}

template <class T>
std::size_t hashOf(const T& value) {
    return std::hash<T>{}(value);
}
template <HasRecord T>
std::size_t hashOf(const T& record);

template <class V>
std::size_t hashOf(const std::optional<V>& value) {
    return value ? mixHashes(1, hashOf(*value)) : 0;
}
template <class V>
std::size_t hashOf(const std::vector<V>& values) {
    std::size_t seed = values.size();
    for (const V& value : values) seed = mixHashes(seed, hashOf(value));
    return seed;
}
template <class V>
std::size_t hashOf(const std::map<std::string, V>& values) {
    std::size_t seed = values.size();
    for (const auto& [key, value] : values) seed = mixHashes(mixHashes(seed, hashOf(key)), hashOf(value));
    return seed;
}

template <HasRecord T>
std::size_t hashOf(const T& record) {
    return std::apply(
        [&](const auto&... field) {
            std::size_t seed = 0;
            ((seed = mixHashes(seed, hashOf(record.*field.member))), ...);
            return seed;
        },
        Record<T>::fields);
}

}  // namespace tessary

/// Every record hashes over all of its fields, beside its equality over all of them.
template <tessary::HasRecord T>
struct std::hash<T> {
    std::size_t operator()(const T& record) const noexcept { return tessary::hashOf(record); }
};
