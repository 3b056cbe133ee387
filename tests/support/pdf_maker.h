#pragma once

#include <string>
#include <vector>

namespace tessary {

/// A plain PDF: one A4 sheet for each text, in Helvetica 12. Texts are ASCII; "\n" begins a new line, and nothing is
/// wrapped, so that long lines run off the sheet.
[[nodiscard]] std::string makePdf(const std::vector<std::string>& pages);

}  // namespace tessary
