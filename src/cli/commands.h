#pragma once

#include <functional>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/command_context.h"

namespace tessary {

/// What the user asked for; run once the whole command line is understood.
using Action = std::function<void(CommandContext&)>;

// Each adds its commands to the program; the one that is asked for becomes `chosen`.
void addNotebookCommands(CLI::App& program, Action& chosen);
void addPageCommands(CLI::App& program, Action& chosen);
void addTrashCommands(CLI::App& program, Action& chosen);
void addExchangeCommands(CLI::App& program, Action& chosen);
void addCardCommands(CLI::App& program, Action& chosen);
void addDeckCommands(CLI::App& cards, Action& chosen);
void addReviewCommand(CLI::App& program, Action& chosen);
void addSettingsCommands(CLI::App& program, Action& chosen);
void addAICommands(CLI::App& program, Action& chosen);
void addGenerateCommand(CLI::App& program, Action& chosen);
void addGradeCommand(CLI::App& program, Action& chosen);
void addVerifyCommand(CLI::App& program, Action& chosen);
void addCompanionCommands(CLI::App& program, Action& chosen);

/// Stands before an argument in square brackets, which the parser would take for a list of its own.
inline constexpr char kBracketGuard = '\x01';

/// Gives an option's text back as the user typed it.
inline const CLI::Validator& asTyped() {
    static const CLI::Validator validator(
        [](std::string& text) {
            if (text.starts_with(kBracketGuard)) text.erase(0, 1);
            return std::string();
        },
        "");
    return validator;
}

/// Adds an option or, without dashes, a positional argument with one text or, for a vector, one text each time.
template <class Target>
CLI::Option* addText(CLI::App& command, const std::string& name, Target& target, const std::string& description) {
    CLI::Option* const option = command.add_option(name, target, description);
    if (name.starts_with("-")) option->allow_extra_args(false);
    return option->transform(asTyped())->type_name(name.starts_with("-") ? "TEXT" : "");
}

/// A subcommand with its arguments in `Args`. `declare` names them to the parser, `run` carries the command out.
template <class Args>
CLI::App* addCommand(CLI::App& parent, Action& chosen, const std::string& name, const std::string& description,
                     void (*declare)(CLI::App&, Args&), void (*run)(CommandContext&, const Args&)) {
    const auto args = std::make_shared<Args>();
    CLI::App* const command = parent.add_subcommand(name, description);
    declare(*command, *args);
    command->callback([&chosen, args, run] { chosen = [args, run](CommandContext& context) { run(context, *args); }; });
    return command;
}

}  // namespace tessary
