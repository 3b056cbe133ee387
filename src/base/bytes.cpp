#include "base/bytes.h"

#include <array>

namespace tessary {
namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kNoSextet = 0xFF;

constexpr std::array<std::uint8_t, 256> kSextets = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(kNoSextet);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
        table[static_cast<std::uint8_t>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
    }
    return table;
}();

}  // namespace

std::string encodeBase64(const Bytes& bytes) {
    std::string text;
    text.reserve((bytes.data.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.data.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.data.size() - i);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) group = group << 8 | (k < count ? bytes.data[i + k] : 0U);
        for (std::size_t k = 0; k < 4; ++k) {
            text += k <= count ? kAlphabet[group >> (18 - 6 * k) & 0x3F] : '=';
        }
    }
    return text;
}

std::optional<Bytes> decodeBase64(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    Bytes bytes;
    bytes.data.reserve(text.size() / 4 * 3);
    for (std::size_t i = 0; i < text.size(); i += 4) {
        const bool last = i + 4 == text.size();
        std::size_t count = 4;
        while (last && count > 2 && text[i + count - 1] == '=') --count;
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            const std::uint8_t sextet = k < count ? kSextets[static_cast<std::uint8_t>(text[i + k])] : std::uint8_t{0};
            if (sextet == kNoSextet) return std::nullopt;
            group = group << 6 | sextet;
        }
        for (std::size_t k = 0; k + 1 < count; ++k) {
            bytes.data.push_back(static_cast<std::uint8_t>(group >> (16 - 8 * k) & 0xFF));
        }
    }
    return bytes;
}

}  // namespace tessary
