#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/settings.h"

namespace tessary {

/// A value of a setting, in its own type.
using SettingValue = std::variant<bool, std::int64_t, double, std::string>;

/// One setting that the user may change.
struct SettingEntry {
    std::string_view key;
    SettingValue defaultValue;                  ///< also tells the type
    std::string_view description;
    std::vector<std::string_view> choices = {}; ///< of a text; any when empty
    std::optional<double> minimum = {};
    std::optional<double> maximum = {};
    bool isAddress = false;                     ///< a text that is empty or the address of a web server
};

/// All of them, sorted by key.
[[nodiscard]] std::span<const SettingEntry> settingsCatalog();

/// The error names the key and the nearest one that exists.
[[nodiscard]] std::expected<const SettingEntry*, std::string> findSetting(std::string_view key);

[[nodiscard]] bool isSet(const Settings& settings, const SettingEntry& entry);
/// The value in effect: the stored one, or the default.
[[nodiscard]] SettingValue settingValue(const Settings& settings, const SettingEntry& entry);
/// Reads `text` as the setting's type ("on", "yes", "true", "1" for a switch) and stores it. The error is for the user.
[[nodiscard]] std::expected<SettingValue, std::string> storeSetting(Settings& settings, const SettingEntry& entry,
                                                                    std::string_view text);

/// Whether `text` reads as the setting's type and lies in its range.
[[nodiscard]] bool fits(const SettingEntry& entry, std::string_view text);

/// "on or off", "a whole number, 0 or more": ends a sentence that begins "it takes".
[[nodiscard]] std::string whatIsExpected(const SettingEntry& entry);

/// "on", "20", "0.9".
[[nodiscard]] std::string describeSetting(const SettingValue& value);

}  // namespace tessary
