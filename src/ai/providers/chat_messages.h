#pragma once

#include <string_view>

#include "base/json_writer.h"

namespace tessary {

/// One entry of a chat's "messages".
inline void writeMessage(JsonWriter& writer, std::string_view role, std::string_view content) {
    writer.beginObject();
    writer.key("role");
    writer.string(role);
    writer.key("content");
    writer.string(content);
    writer.endObject();
}

}  // namespace tessary
