#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

/// Binary data; base64 in JSON.
struct Bytes {
    std::vector<std::uint8_t> data;

    friend auto operator<=>(const Bytes&, const Bytes&) = default;
};

/// Standard alphabet, padded (RFC 4648, section 4).
[[nodiscard]] std::string encodeBase64(const Bytes& bytes);

/// Refuses foreign characters, white space and missing padding.
[[nodiscard]] std::optional<Bytes> decodeBase64(std::string_view text);

}  // namespace tessary

template <>
struct std::hash<tessary::Bytes> {
    std::size_t operator()(const tessary::Bytes& bytes) const noexcept {
        return std::hash<std::string_view>{}({reinterpret_cast<const char*>(bytes.data.data()), bytes.data.size()});
    }
};
