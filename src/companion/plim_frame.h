#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tessary {

/// One effect as drawn: a spark, thought dots, a notebook and so on.
struct FzFx {
    std::string type;
    bool body = false;  ///< drawn in the star's own moving and rotating space instead of the canvas
    std::optional<std::string> color;  ///< "#RRGGBB"
    /// Placement (`x`, `y` in canvas units) and the values of its tracks, by name.
    std::map<std::string, double> v;

    friend bool operator==(const FzFx&, const FzFx&) = default;
};

/// One picture of the companion, on a canvas of 240 units square.
struct PlimFrame {
    std::map<std::string, double> pose;        ///< by channel: "dx", "rot", "lid", …
    std::map<std::string, std::string> steps;  ///< shapes of "eye", "brow" and "mouth"
    std::vector<FzFx> fx;                      ///< in the order of drawing

    friend bool operator==(const PlimFrame&, const PlimFrame&) = default;
};

}  // namespace tessary
