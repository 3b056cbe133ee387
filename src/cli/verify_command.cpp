#include "app/library_check.h"
#include "app/library_repair.h"
#include "app/workspace.h"
#include "cli/commands.h"
#include "cli/output.h"

namespace tessary {
namespace {

struct VerifyArgs {
    bool repair = false;
};

/// Holds the lock only while it works on the files, with no store in between.
RepairReport repair(CommandContext& context) {
    SystemPorts& system = context.system();
    const auto lock = valueOrFail(lockLibrary(system.files, context.paths().library));
    NotificationCenter notifications;
    return valueOrFail(repairLibrary(context.paths().library, {.files = system.files,
                                                               .loop = context.loop(),
                                                               .clock = system.clock,
                                                               .calendar = system.calendar,
                                                               .ids = system.ids,
                                                               .settings = system.settings,
                                                               .console = system.console,
                                                               .notifications = notifications}));
}

RepairReport check(CommandContext& context) {
    SystemPorts& system = context.system();
    const ReadContext reading{.now = context.now(), .freshId = [&system] { return system.ids.next(); }};
    return {.done = {}, .remaining = checkLibrary(context.paths().library, system.files, reading)};
}

void printReport(CommandContext& context, const RepairReport& report, std::size_t problems) {
    std::ostream& out = context.out();
    for (const std::string& sentence : report.done) out << "Mended: " << onOneLine(sentence) << '\n';
    bool repairable = false;
    for (const LibraryFinding& finding : report.remaining) {
        const bool isProblem = finding.severity == LibraryFinding::Severity::problem;
        out << (isProblem ? "Problem: " : "Note: ") << onOneLine(finding.text) << '\n';
        repairable = repairable || finding.repairable;
    }
    if (problems == 0) {
        out << "The library is in order.\n";
    } else {
        out << counted(problems, "problem", "problems") << " found.";
        out << (repairable ? " Run \"tessary-cli verify --repair\" to mend what can be mended without loss.\n" : "\n");
    }
}

void verify(CommandContext& context, const VerifyArgs& args) {
    const bool there = context.system().files.info(context.paths().library.base).has_value();
    const RepairReport report = !there ? RepairReport{} : args.repair ? repair(context) : check(context);
    const auto problems = static_cast<std::size_t>(
        std::ranges::count(report.remaining, LibraryFinding::Severity::problem, &LibraryFinding::severity));
    if (context.json()) {
        context.printJsonOf(report);
    } else {
        printReport(context, report, problems);
    }
    if (problems > 0) context.setFailed();
}

}  // namespace

void addVerifyCommand(CLI::App& program, Action& chosen) {
    addCommand<VerifyArgs>(
        program, chosen, "verify", "Check every file of the library",
        [](CLI::App& command, VerifyArgs& args) {
            command.add_flag("--repair", args.repair, "Mend what can be mended without loss");
        },
        verify);
}

}  // namespace tessary
