#pragma once

#include <QtCore/QString>
#include <optional>

#include "desktop/desk/desk.h"

namespace tessary {

/// A deck's place as QML names it: "loose", a notebook's identity, or anything else for the whole library.
[[nodiscard]] std::optional<ShelfItem> placeFromQml(const QString& place);
[[nodiscard]] QString toQml(const ShelfItem& place);

/// "All cards", "Loose pages", or the notebook's name; empty for a notebook that is gone.
[[nodiscard]] QString deckName(const Desk& desk, const std::optional<ShelfItem>& place);
/// "#RRGGBB"; empty for the whole library.
[[nodiscard]] QString deckColor(const Desk& desk, const std::optional<ShelfItem>& place);

}  // namespace tessary
