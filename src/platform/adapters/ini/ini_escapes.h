#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/bytes.h"

/// How QSettings writes keys and values into the lines of an INI file.
namespace tessary {

inline constexpr std::string_view kIniDataMark = "@ByteArray(";   ///< before binary data, ended by ")"
inline constexpr std::string_view kIniStringMark = "@String(";  ///< before a text with NUL characters, ended by ")"

[[nodiscard]] std::string escapedIniKey(std::string_view key);
[[nodiscard]] std::string unescapedIniKey(std::string_view escaped);

[[nodiscard]] std::string escapedIniText(std::string_view text);
[[nodiscard]] std::string escapedIniData(const Bytes& bytes);
/// With its marks; absent for a list of values.
[[nodiscard]] std::optional<std::string> unescapedIniValue(std::string_view escaped);

}  // namespace tessary
