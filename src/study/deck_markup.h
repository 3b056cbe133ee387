#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The little of HTML that deck files hold. Texts are UTF-8. Pure functions, any thread, linear in the text.
namespace tessary {

struct Entity {
    char32_t codePoint;
    std::size_t length;  ///< with '&' and ';'
};

/// The entity `text` begins with.
[[nodiscard]] std::optional<Entity> leadingEntity(std::string_view text);

/// Whether `text` begins like a tag; what ends it may be missing.
[[nodiscard]] bool beginsTag(std::string_view text);

/// With the characters that entities stand for, and "\n" as the only line break.
[[nodiscard]] std::string decodedEntities(std::string_view text);

/// Line breaks for the tags that make them, nothing for other tags; entities stay. A block's end breaks the line only
/// when more follows.
[[nodiscard]] std::string withoutTags(std::string_view text);

/// With "\n" for every "\r\n" and "\r".
[[nodiscard]] std::string withPlainLineBreaks(std::string_view text);

}  // namespace tessary
