#include "cli/commands.h"
#include "cli/export_target.h"
#include "cli/output.h"
#include "library/library_exchange.h"

namespace tessary {
namespace {

struct FileArgs {
    std::string file;
};

using Export = std::expected<std::string, Refusal> (*)(const JournalStore&);

void exportTo(CommandContext& context, const std::string& file, std::string_view proposedName, Export content) {
    Workspace& workspace = context.open(WorkspaceUse::read);
    const std::filesystem::path target = exportTarget(context, file, proposedName);
    valueOrFail(workspace.flush());
    valueOrFail(writeExport(target, valueOrFail(content(workspace.library())), context.system().files,
                            context.system().console));
    const std::size_t pages = workspace.library().entries().size();
    if (context.json()) {
        return context.printJsonObject([&](auto member) {
            member("file", target.string());
            member("pages", pages);
        });
    }
    context.out() << "Exported " << counted(pages, "page", "pages") << " to " << target.string() << '\n';
}

void exportJson(CommandContext& context, const FileArgs& args) {
    exportTo(context, args.file, kJsonExportName, exportedJson);
}

void exportMarkdown(CommandContext& context, const FileArgs& args) {
    exportTo(context, args.file, kMarkdownExportName, exportedMarkdown);
}

void importFromJson(CommandContext& context, const FileArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    const ImportCount count = valueOrFail(importJson(workspace.library(), args.file, workspace.services()));
    if (context.json()) {
        return context.printJsonObject([&](auto member) {
            member("added", count.added);
            member("skipped", count.skipped);
        });
    }
    context.out() << "Added " << counted(count.added, "page", "pages") << '.';
    if (count.skipped > 0) {
        context.out() << ' ' << counted(count.skipped, "page was", "pages were") << " in the library already.";
    }
    context.out() << '\n';
}

}  // namespace

void addExchangeCommands(CLI::App& program, Action& chosen) {
    CLI::App& exports = *program.add_subcommand("export", "Write all pages to a file of your own");
    exports.require_subcommand(1);
    const auto declareTarget = [](CLI::App& command, FileArgs& args) {
        addText(command, "FILE", args.file, "The file to write; what it held is replaced")->required();
    };
    addCommand<FileArgs>(exports, chosen, "json", "As a JSON backup", declareTarget, exportJson);
    addCommand<FileArgs>(exports, chosen, "markdown", "As one Markdown document", declareTarget, exportMarkdown);
    CLI::App& imports = *program.add_subcommand("import", "Bring back pages from a backup");
    imports.require_subcommand(1);
    addCommand<FileArgs>(
        imports, chosen, "json", "Import notes from a Tessary JSON backup. Duplicate notes (same ID) are skipped.",
        [](CLI::App& command, FileArgs& args) { addText(command, "FILE", args.file, "The backup")->required(); },
        importFromJson);
}

}  // namespace tessary
