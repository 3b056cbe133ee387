#pragma once

#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/json_reader.h"
#include "base/plim_reaction.h"

namespace tessary {

/// How the companion moves: its rest pose, and the keyframe tracks of each reaction. Times are seconds from the
/// reaction's start.
struct PlimSpec {
    struct Key {
        double t = 0;
        double v = 0;
        std::string ease = "io";  ///< of the way from the key before to this one; see `ease`
    };

    struct StepKey {
        double t = 0;
        std::string v;  ///< a shape, which holds until the next key
    };

    /// Keys in ascending time. An effect's tracks are such too.
    using Track = std::vector<Key>;

    struct Fx {
        std::string type;
        std::optional<std::string> space;  ///< "body", or absent for the canvas
        std::optional<std::string> c;      ///< "#RRGGBB"
        std::optional<std::map<std::string, double>> v;
        std::optional<std::map<std::string, Track>> tracks;
    };

    struct LoopRange {
        double from = 0;
        double to = 0;
    };

    struct Reaction {
        std::string label;
        std::string desc;
        double dur = 0;
        std::optional<std::vector<double>> loop;
        double still = 0;  ///< the moment that stands for the whole in a picture without motion
        std::optional<std::map<std::string, Track>> pose;
        std::optional<std::map<std::string, std::vector<StepKey>>> steps;
        std::optional<std::vector<Fx>> fx;

        /// What repeats once it was played from 0. Absent for a reaction that ends: without `loop`, or with one that
        /// is not two ascending moments.
        [[nodiscard]] std::optional<LoopRange> loopRange() const;
    };

    double blend = 0;  ///< seconds of a cross-fade
    std::map<std::string, double> base;
    std::map<std::string, std::string> baseSteps;
    std::map<std::string, Reaction> reactions;

    /// Ends the program when the document lacks the reaction.
    [[nodiscard]] const Reaction& reaction(PlimReaction reaction) const;
};

[[nodiscard]] std::expected<PlimSpec, DecodingError> decodePlimSpec(std::string_view document);

/// Ends the program, with a message on the error stream, when the document can't be read: it is part of the program,
/// and there is nothing to fall back on.
[[nodiscard]] PlimSpec plimSpecOrAbort(std::string_view document);

/// The program's own, decoded by the first call; any thread may make it.
[[nodiscard]] const PlimSpec& plimSpec();

}  // namespace tessary
