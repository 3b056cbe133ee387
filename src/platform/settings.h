#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"

namespace tessary {

/// The user's settings: dotted keys, typed values. Main thread only.
/// A value of another type than asked for is converted where that is plain ("1" and true), else reads as absent.
class Settings {
public:
    virtual ~Settings() = default;

    [[nodiscard]] virtual std::optional<std::string> text(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<bool> boolean(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;
    /// Always finite.
    [[nodiscard]] virtual std::optional<double> number(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<Bytes> data(std::string_view key) const = 0;

    // Each change is stored at once; a failure leaves the old value in place and says why.
    using Stored = std::expected<void, std::string>;
    [[nodiscard]] virtual Stored setText(std::string_view key, std::string_view value) = 0;
    [[nodiscard]] virtual Stored setBoolean(std::string_view key, bool value) = 0;
    [[nodiscard]] virtual Stored setInteger(std::string_view key, std::int64_t value) = 0;
    /// A value that is not finite is refused.
    [[nodiscard]] virtual Stored setNumber(std::string_view key, double value) = 0;
    [[nodiscard]] virtual Stored setData(std::string_view key, const Bytes& value) = 0;
    /// Removing a key that is not there is no failure.
    [[nodiscard]] virtual Stored remove(std::string_view key) = 0;

    /// All keys that have a value, sorted.
    [[nodiscard]] virtual std::vector<std::string> keys() const = 0;
};

}  // namespace tessary
