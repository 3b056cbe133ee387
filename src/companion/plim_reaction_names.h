#pragma once

#include "base/json_record.h"
#include "base/plim_reaction.h"

namespace tessary {

/// The keys of the reactions in plim.json; also what the command line calls them.
template <>
struct EnumNames<PlimReaction> {
    static constexpr auto names = std::array{
        std::pair{PlimReaction::idle, "idle"},   std::pair{PlimReaction::wave, "wave"},
        std::pair{PlimReaction::cur, "cur"},     std::pair{PlimReaction::think, "think"},
        std::pair{PlimReaction::study, "study"}, std::pair{PlimReaction::win, "win"},
        std::pair{PlimReaction::fail, "fail"},   std::pair{PlimReaction::sleep, "sleep"},
    };
};

[[nodiscard]] constexpr std::string_view rawValue(PlimReaction reaction) { return enumName(reaction); }

[[nodiscard]] constexpr std::optional<PlimReaction> plimReactionNamed(std::string_view rawValue) {
    return enumNamed<PlimReaction>(rawValue);
}

}  // namespace tessary
