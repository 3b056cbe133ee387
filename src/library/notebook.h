#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/date.h"
#include "base/uuid.h"

namespace tessary {

enum class CoverMaterial { classic, cloth, leather, kraft, glossy };
enum class CoverPattern { none, lines, grid, dots, stripes, waves, checks };
enum class CoverLabelStyle { glass, sticker, embossed };

inline constexpr std::string_view kUntitledNotebook = "Untitled Notebook";

/// A notebook: one subject, with the look of its cover.
struct Notebook {
    NotebookId id;
    std::string name;
    std::string icon = "folder.fill";  ///< a symbol name
    std::string colorHex = "FFDB00";   ///< six hex digits without "#"
    Date createdAt;
    std::optional<std::string> emoji;
    std::optional<std::string> subtitle;
    std::optional<std::string> accentHex;
    CoverMaterial material = CoverMaterial::classic;
    CoverPattern pattern = CoverPattern::none;
    CoverLabelStyle labelStyle = CoverLabelStyle::glass;
    bool hasBand = false;
    bool hasRibbon = false;
    std::optional<std::string> coverImageFilename;  ///< in the covers folder
    bool isPinned = false;
    std::optional<Date> lastOpenedAt;

    friend bool operator==(const Notebook&, const Notebook&) = default;
};

}  // namespace tessary
