#include "base/uuid.h"

namespace tessary {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

constexpr bool hyphenAt(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

/// -1 for a character that is no hexadecimal digit.
constexpr int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36) return std::nullopt;
    Uuid id;
    std::size_t nibble = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (hyphenAt(i)) {
            if (text[i] != '-') return std::nullopt;
            continue;
        }
        const int value = hexValue(text[i]);
        if (value < 0) return std::nullopt;
        std::uint8_t& byte = id.bytes[nibble / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
        ++nibble;
    }
    return id;
}

Uuid Uuid::fromRandomBytes(std::array<std::uint8_t, 16> random) {
    random[6] = static_cast<std::uint8_t>((random[6] & 0x0F) | 0x40);
    random[8] = static_cast<std::uint8_t>((random[8] & 0x3F) | 0x80);
    return Uuid{random};
}

std::string Uuid::toString() const {
    std::string text(36, '-');
    std::size_t position = 0;
    for (const std::uint8_t byte : bytes) {
        if (hyphenAt(position)) ++position;
        text[position++] = kHexDigits[byte >> 4];
        text[position++] = kHexDigits[byte & 0x0F];
    }
    return text;
}

}  // namespace tessary
