#include "cli/identifiers.h"
#include "cli/interrupts.h"
#include "cli/page_commands.h"
#include "cli/progress_line.h"
#include "library/note_import.h"

namespace tessary {
namespace {

struct ImportArgs {
    std::vector<std::string> paths;
    std::string notebook;
};

NoteImportReport runImport(CommandContext& context, Workspace& workspace, const ImportArgs& args) {
    const Interrupts interrupts;
    std::stop_source stop;
    ProgressLine line(context.streams());
    NoteImportOptions options{.notebook = {}, .progress = {}, .stop = stop.get_token()};
    options.progress = [&](const NoteImportProgress& progress) {
        if (interrupts.raised()) stop.request_stop();
        if (progress.total == 0) return;
        line.show(static_cast<double>(progress.done) / static_cast<double>(progress.total),
                  fmt::format("{} of {} files", progress.done, progress.total), ProgressLine::Weight::detail);
    };
    if (!args.notebook.empty()) options.notebook = findNotebook(workspace.library(), args.notebook).id;
    const std::vector<std::filesystem::path> paths(args.paths.begin(), args.paths.end());
    return importNotes(workspace.library(), paths, workspace.services(), context.system().frontMatter, options);
}

std::string describe(const NoteProblem& problem) { return onOneLine(problem.path.string() + ": " + problem.text); }

void printReportJson(CommandContext& context, const NoteImportReport& report) {
    std::vector<std::string> problems;
    for (const NoteProblem& problem : report.problems) problems.push_back(describe(problem));
    context.printJsonObject([&](auto member) {
        member("added", report.added);
        member("notebooks", report.notebooks);
        member("alreadyThere", report.alreadyThere);
        member("images", report.images);
        member("problems", problems);
    });
}

void printReport(CommandContext& context, const NoteImportReport& report) {
    std::ostream& out = context.out();
    out << "Added " << counted(report.added.size(), "page", "pages");
    if (!report.notebooks.empty()) out << " in " << counted(report.notebooks.size(), "new notebook", "new notebooks");
    if (report.images > 0) out << " with " << counted(report.images, "image", "images");
    out << '.';
    if (report.alreadyThere > 0)
        out << ' ' << counted(report.alreadyThere, "note was", "notes were") << " already there.";
    out << '\n';
    if (!report.added.empty()) out << "Make cards of them: tessary-cli cards from-notes --all\n";
}

void importPages(CommandContext& context, const ImportArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    const NoteImportReport report = runImport(context, workspace, args);
    for (const NoteProblem& problem : report.problems) context.err() << describe(problem) << '\n';
    if (report.cancelled) {
        const std::string kept = counted(report.added.size(), "page", "pages");
        valueOrFail(workspace.flush());
        throw CommandFailure("The import was cancelled; " + kept + " came in before. Run it again for the rest.");
    }
    if (!report.problems.empty() && report.added.empty() && report.alreadyThere == 0) {
        throw CommandFailure("Nothing could be imported. " + describe(report.problems.front()));
    }
    context.json() ? printReportJson(context, report) : printReport(context, report);
}

}  // namespace

void addImportCommand(CLI::App& pages, Action& chosen) {
    addCommand<ImportArgs>(
        pages, chosen, "import", "Bring in Markdown and text files; a folder becomes a notebook",
        [](CLI::App& command, ImportArgs& args) {
            addText(command, "PATH", args.paths, "Files and folders")->required();
            addText(command, "--notebook", args.notebook, "Into this notebook")->type_name("ID");
        },
        importPages);
}

}  // namespace tessary
