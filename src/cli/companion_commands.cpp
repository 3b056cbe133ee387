#include <cmath>

#include <fmt/format.h>

#include "cli/commands.h"
#include "cli/named_values.h"
#include "cli/output.h"
#include "companion/plim_reaction_names.h"
#include "companion/plim_sampling.h"

namespace tessary {

template <>
struct Record<FzFx> {
    static constexpr auto fields = std::tuple{
        required("type", &FzFx::type),
        required("body", &FzFx::body),
        optional("color", &FzFx::color),
        required("v", &FzFx::v),
    };
};

template <>
struct Record<PlimFrame> {
    static constexpr auto fields = std::tuple{
        required("pose", &PlimFrame::pose),
        required("steps", &PlimFrame::steps),
        required("fx", &PlimFrame::fx),
    };
};

namespace {

/// A reaction as the list shows it.
struct ReactionInfo {
    std::string name;
    std::string label;
    std::string description;
    double seconds = 0;
    std::optional<std::vector<double>> loop;
    double still = 0;
};

}  // namespace

template <>
struct Record<ReactionInfo> {
    static constexpr auto fields = std::tuple{
        required("name", &ReactionInfo::name),
        required("label", &ReactionInfo::label),
        required("description", &ReactionInfo::description),
        required("seconds", &ReactionInfo::seconds),
        optional("loop", &ReactionInfo::loop),
        required("still", &ReactionInfo::still),
    };
};

namespace {

struct NoArgs {};

std::vector<ReactionInfo> allReactions() {
    std::vector<ReactionInfo> infos;
    for (const auto& [reaction, name] : EnumNames<PlimReaction>::names) {
        const PlimSpec::Reaction& motion = plimSpec().reaction(reaction);
        infos.push_back({name, motion.label, motion.desc, motion.dur, motion.loop, motion.still});
    }
    return infos;
}

void listReactions(CommandContext& context, const NoArgs&) {
    const std::vector<ReactionInfo> infos = allReactions();
    if (context.json()) return context.printJsonOf(infos);
    for (const ReactionInfo& info : infos) {
        const std::string loop =
            info.loop ? fmt::format(", repeats from {:g} s", info.loop->front()) : std::string(", once");
        context.out() << fmt::format("{:<7}{:<12}{:g} s{}\n    {}\n", info.name, info.label, info.seconds, loop,
                                     info.description);
    }
}

struct FrameArgs {
    std::string reaction;
    std::string seconds;
};

double secondsOf(const std::string& text) {
    const std::optional<double> seconds = parseNumber<double>(text);
    if (!seconds || !std::isfinite(*seconds) || *seconds < 0) {
        throw UsageFailure("SECONDS takes a number of 0 or more, not \"" + text + "\".");
    }
    return *seconds;
}

std::string describe(const std::map<std::string, double>& values) {
    std::vector<std::string> pieces;
    for (const auto& [name, value] : values) pieces.push_back(fmt::format("{} {:.4g}", name, value));
    return joined(pieces, ", ");
}

void printFrame(CommandContext& context, const PlimFrame& frame) {
    TextTable values({"CHANNEL", "VALUE"});
    for (const auto& [channel, value] : frame.pose) values.add({channel, fmt::format("{:.6g}", value)});
    for (const auto& [part, shape] : frame.steps) values.add({part, shape});
    values.print(context.out(), context.system().text);
    if (frame.fx.empty()) return;
    context.out() << '\n';
    TextTable effects({"EFFECT", "ON", "COLOUR", "VALUES"});
    for (const FzFx& effect : frame.fx) {
        effects.add({effect.type, effect.body ? "body" : "canvas", effect.color.value_or(""), describe(effect.v)});
    }
    effects.print(context.out(), context.system().text);
}

void showFrame(CommandContext& context, const FrameArgs& args) {
    const auto reaction = namedOrFail<PlimReaction>("REACTION", asciiLowered(args.reaction));
    const PlimFrame frame = plimFrame(reaction, secondsOf(args.seconds));
    if (context.json()) return context.printJsonOf(frame);
    printFrame(context, frame);
}

}  // namespace

void addCompanionCommands(CLI::App& program, Action& chosen) {
    CLI::App& group = *program.add_subcommand("companion", "Look at how Plim, the companion, moves");
    group.require_subcommand(1);
    addCommand<NoArgs>(group, chosen, "list", "List what it can do", [](CLI::App&, NoArgs&) {}, listReactions);
    addCommand<FrameArgs>(
        group, chosen, "frame", "Print one picture of a reaction as numbers",
        [](CLI::App& command, FrameArgs& args) {
            addText(command, "REACTION", args.reaction, "As \"companion list\" shows it")->required();
            addText(command, "SECONDS", args.seconds, "The moment, from the reaction's start")->required();
        },
        showFrame);
}

}  // namespace tessary
