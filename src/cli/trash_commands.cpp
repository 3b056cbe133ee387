#include "cli/commands.h"
#include "cli/identifiers.h"

namespace tessary {
namespace {

struct NoArgs {};

std::string deletesIn(int days) { return fmt::format("Deletes in {} {}", days, days == 1 ? "day" : "days"); }

void listTrash(CommandContext& context, const NoArgs&) {
    JournalStore& library = context.open(WorkspaceUse::read).library();
    if (context.json()) return context.printJsonOf(library.trash().snapshot());
    if (library.trash().empty()) {
        context.out() << "The trash is empty. Deleted pages go to a Trash that keeps them for 30 days first.\n";
        return;
    }
    TextTable table({"ID", "TITLE", "DELETED", ""});
    for (const TrashedEntry& trashed : library.trash()) {
        table.add({shortId(trashed.entry.id), titleOf(trashed.entry),
                   localTime(trashed.deletedAt, context.system().calendar), deletesIn(library.daysLeft(trashed))});
    }
    table.print(context.out(), context.system().text);
}

struct RestoreArgs {
    std::string id;
};

void restorePage(CommandContext& context, const RestoreArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::change).library();
    const std::vector<PageId> restored = valueOrFail(library.restore(findTrashed(library, args.id).entry.id));
    if (context.json()) {
        return context.printJson([&](JsonWriter& writer) {
            writer.beginArray();
            for (const PageId id : restored) writeRecord(writer, *library.entries().find(id));
            writer.endArray();
        });
    }
    context.out() << "Restored \"" << titleOf(*library.entries().find(restored.front())) << "\"";
    if (restored.size() > 1) context.out() << " and " << counted(restored.size() - 1, "subpage", "subpages");
    context.out() << ".\n";
}

struct EmptyArgs {
    bool yes = false;
};

void emptyTrash(CommandContext& context, const EmptyArgs& args) {
    if (!args.yes) {
        throw UsageFailure(
            "This permanently deletes everything in the Trash. This cannot be undone. "
            "Repeat with --yes to do it.");
    }
    const std::size_t deleted = context.open(WorkspaceUse::change).library().emptyTrash();
    if (context.json()) {
        return context.printJsonObject([&](auto member) { member("deleted", deleted); });
    }
    context.out() << "Deleted " << counted(deleted, "page", "pages") << " for good.\n";
}

}  // namespace

void addTrashCommands(CLI::App& program, Action& chosen) {
    CLI::App& group = *program.add_subcommand("trash", "See, restore and empty the trash");
    group.require_subcommand(1);
    addCommand<NoArgs>(group, chosen, "list", "List the pages in the trash", [](CLI::App&, NoArgs&) {}, listTrash);
    addCommand<RestoreArgs>(
        group, chosen, "restore", "Bring a page back, with the subpages that went with it",
        [](CLI::App& command, RestoreArgs& args) { addText(command, "ID", args.id, "The page")->required(); },
        restorePage);
    addCommand<EmptyArgs>(
        group, chosen, "empty", "Delete everything in the trash for good",
        [](CLI::App& command, EmptyArgs& args) { command.add_flag("--yes", args.yes, "Really do it"); }, emptyTrash);
}

}  // namespace tessary
