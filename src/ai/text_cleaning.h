#pragma once

#include <string>
#include <string_view>

#include "platform/text_services.h"

namespace tessary {

/// Source text as models get it: words split at line ends joined, the lines of a paragraph joined with spaces, runs of
/// spaces and tabs made one space, paragraphs one blank line apart. Lines may end in any way.
[[nodiscard]] std::string cleanedText(std::string_view text, const TextServices& services);

}  // namespace tessary
