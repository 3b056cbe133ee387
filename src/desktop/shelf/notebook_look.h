#pragma once

#include <QtCore/QVariantMap>

#include "library/library_json.h"

/// A notebook's look as QML knows it: colours as "#RRGGBB", enumerations by their names in the library's files.
namespace tessary {

/// Empty for what is no colour.
[[nodiscard]] QString qmlColor(const std::string& hex);

template <HasEnumNames E>
[[nodiscard]] QString qmlName(E value) {
    const std::string_view name = enumName(value);
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

/// With the keys name, subtitle, emoji, color, accent, material, pattern, labelStyle, band and ribbon; what a notebook
/// lacks is empty.
[[nodiscard]] QVariantMap lookOf(const Notebook& notebook);

/// Takes over what stands in `look` and is valid.
void applyLook(const QVariantMap& look, Notebook& notebook);

/// A notebook to be made: its colour differs from that of the one made before it.
[[nodiscard]] Notebook freshNotebook(int present);

}  // namespace tessary
