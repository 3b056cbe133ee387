#pragma once

#include <string_view>

namespace tessary {

/// The text of plim.json, as the program carries it.
extern const std::string_view kPlimDocument;

}  // namespace tessary
