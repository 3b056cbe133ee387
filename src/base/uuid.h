#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessary {

/// A 128-bit identifier (RFC 4122). Written upper-case with hyphens; read in either case.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// Nothing but the canonical 36-character form is accepted.
    [[nodiscard]] static std::optional<Uuid> parse(std::string_view text);

    /// A version 4 identifier out of 16 random bytes: the version and variant bits are set here.
    [[nodiscard]] static Uuid fromRandomBytes(std::array<std::uint8_t, 16> random);

    [[nodiscard]] std::string toString() const;

    friend auto operator<=>(const Uuid&, const Uuid&) = default;
};

/// An identifier of one kind of record. Kinds do not convert into each other.
template <class Tag>
struct Id {
    Uuid uuid;

    [[nodiscard]] static std::optional<Id> parse(std::string_view text) {
        const std::optional<Uuid> parsed = Uuid::parse(text);
        return parsed ? std::optional<Id>(Id{*parsed}) : std::nullopt;
    }
    [[nodiscard]] std::string toString() const { return uuid.toString(); }

    friend auto operator<=>(const Id&, const Id&) = default;
};

using PageId = Id<struct PageTag>;
using NotebookId = Id<struct NotebookTag>;
using CardId = Id<struct CardTag>;
using QuizId = Id<struct QuizTag>;
using ExamId = Id<struct ExamTag>;
using TaskId = Id<struct TaskTag>;

}  // namespace tessary

template <>
struct std::hash<tessary::Uuid> {
    std::size_t operator()(const tessary::Uuid& id) const noexcept {
        std::uint64_t halves[2];
        std::memcpy(halves, id.bytes.data(), sizeof halves);
        return static_cast<std::size_t>(halves[0] ^ (halves[1] * 0x9E3779B97F4A7C15ULL));
    }
};

template <class Tag>
struct std::hash<tessary::Id<Tag>> {
    std::size_t operator()(const tessary::Id<Tag>& id) const noexcept { return std::hash<tessary::Uuid>{}(id.uuid); }
};
