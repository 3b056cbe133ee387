#include "cli/program.h"

#include <algorithm>

#include "base/text.h"
#include "cli/commands.h"

namespace tessary {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr const char* kDescription =
    "Tessary keeps your notes, makes cards of them, and asks you each card just before you would forget it.";

void declareGlobals(CLI::App& program, GlobalOptions& options) {
    addText(program, "--home", options.home, "Keep everything below this folder instead of the usual places")
        ->take_last();
    program
        .add_option_function<std::string>(
            "--now",
            [&options](const std::string& text) {
                options.now = parseIso8601(text);
                if (!options.now) throw CLI::ValidationError("--now", "\"" + text + "\" is not a moment in ISO 8601");
            },
            "The moment to believe it is, in ISO 8601")
        ->take_last();
    program.add_flag("--json", options.json, "Print one JSON document");
}

void declareCommands(CLI::App& program, Action& chosen) {
    addNotebookCommands(program, chosen);
    addPageCommands(program, chosen);
    addTrashCommands(program, chosen);
    addExchangeCommands(program, chosen);
    addCardCommands(program, chosen);
    addGenerateCommand(program, chosen);
    addGradeCommand(program, chosen);
    addReviewCommand(program, chosen);
    addAICommands(program, chosen);
    addSettingsCommands(program, chosen);
    addVerifyCommand(program, chosen);
    addCompanionCommands(program, chosen);
    program.require_subcommand(1);
    for (CLI::App* const group : program.get_subcommands({})) {
        group->fallthrough();
        for (CLI::App* const command : group->get_subcommands({})) command->fallthrough();
    }
}

int fail(const ProgramStreams& streams, bool json, const std::string& text, int code) {
    streams.err << text << '\n';
    if (json) {
        JsonWriter writer;
        writer.beginObject();
        writer.key("error");
        writer.string(text);
        writer.endObject();
        streams.out << writer.finish().value_or("{}") << '\n';
    }
    return code;
}

/// As the parser wants them: from last to first, with brackets guarded and "--title=" as an option with an empty text,
/// for which it would take the next argument.
std::vector<std::string> prepared(const std::vector<std::string>& arguments) {
    std::vector<std::string> prepared;
    for (const std::string& argument : arguments) {
        if (argument.starts_with("--") && argument.ends_with('=')) {
            prepared.push_back(argument.substr(0, argument.size() - 1));
            prepared.emplace_back();
        } else if (argument.starts_with('[') && argument.ends_with(']')) {
            prepared.push_back(kBracketGuard + argument);
        } else {
            prepared.push_back(argument);
        }
    }
    std::ranges::reverse(prepared);
    return prepared;
}

std::string describe(const CLI::ParseError& error, const CLI::App& program) {
    const std::vector<std::string> unknown = program.remaining(true);
    const bool lacksCommand = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::RequiredError);
    const std::string text = lacksCommand && !unknown.empty() ? "There is no command \"" + unknown.front() + "\"."
                                                              : std::string(error.what());
    return text + "\nRun with --help to see what is possible.";
}

int runAction(const Action& chosen, const GlobalOptions& options, const ProgramStreams& streams,
              const Environment& environment) {
    try {
        CommandContext context(options, streams, environment);
        chosen(context);
        context.finish();
        streams.out << context.answer();
        return context.failed() ? kFailed : kDone;
    } catch (const UsageFailure& failure) {
        return fail(streams, options.json, failure.what(), kWrongUsage);
    } catch (const std::exception& failure) {
        return fail(streams, options.json, failure.what(), kFailed);
    }
}

}  // namespace

int runProgram(const std::vector<std::string>& arguments, const ProgramStreams& streams,
               const Environment& environment) {
    const bool json = std::ranges::find(arguments, "--json") != arguments.end();
    if (!std::ranges::all_of(arguments, isValidUtf8)) {
        return fail(streams, json, "The command line is not valid UTF-8.", kWrongUsage);
    }
    CLI::App program(kDescription, "tessary-cli");
    program.set_version_flag("--version", "tessary-cli " TESSARY_VERSION);
    GlobalOptions options;
    Action chosen;
    declareGlobals(program, options);
    declareCommands(program, chosen);
    try {
        program.parse(prepared(arguments));
    } catch (const CLI::Success& success) {  // help or version
        program.exit(success, streams.out, streams.err);
        return kDone;
    } catch (const CLI::ParseError& error) {
        if (arguments.empty()) return fail(streams, json, program.help(), kWrongUsage);
        return fail(streams, json, describe(error, program), kWrongUsage);
    }
    return runAction(chosen, options, streams, environment);
}

}  // namespace tessary
