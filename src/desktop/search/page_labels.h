#pragma once

#include <QtCore/QVariantList>

#include "desktop/desk/desk.h"
#include "library/search_text.h"

namespace tessary {

/// Where the window shows a page: its notebook, "loose" or "archive".
[[nodiscard]] QString placeOf(const JournalEntry& page);
/// Its own title, or what stands for an empty one.
[[nodiscard]] QString titleOf(const JournalEntry& page);
/// Where a page stands, from the notebook inwards: "Cell Biology › Energy in cells".
[[nodiscard]] QString pathOf(const JournalEntry& page, const JournalStore& library);
/// "#RRGGBB"; empty for a loose page.
[[nodiscard]] QString colorOf(const JournalEntry& page, const JournalStore& library);

/// Spans of a UTF-8 text as QML has them: maps of "start" and "length" in UTF-16 code units.
[[nodiscard]] QVariantList toQml(const std::vector<TextSpan>& spans, std::string_view text);

}  // namespace tessary
