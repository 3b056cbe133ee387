#include "cli/commands.h"
#include "cli/identifiers.h"

namespace tessary {
namespace {

struct NoArgs {};

void listNotebooks(CommandContext& context, const NoArgs&) {
    JournalStore& library = context.open(WorkspaceUse::read).library();
    if (context.json()) return context.printJsonOf(library.notebooks().snapshot());
    std::unordered_map<NotebookId, std::size_t> pageCounts;
    for (const JournalEntry& page : library.entries()) {
        if (page.notebookID) ++pageCounts[*page.notebookID];
    }
    TextTable table({"ID", "NAME", "PAGES", "CREATED"});
    for (const Notebook& notebook : library.notebooks()) {
        table.add({shortId(notebook.id), onOneLine(notebook.name), std::to_string(pageCounts[notebook.id]),
                   localTime(notebook.createdAt, context.system().calendar)});
    }
    if (library.notebooks().empty()) {
        context.out() << "There are no notebooks yet. Make one: tessary-cli notebooks add NAME\n";
    } else {
        table.print(context.out(), context.system().text);
    }
}

struct AddArgs {
    std::string name;
};

void printNotebook(CommandContext& context, const JournalStore& library, NotebookId id, std::string_view done) {
    const Notebook& notebook = *library.notebooks().find(id);
    if (context.json()) return context.printJsonOf(notebook);
    context.out() << done << " \"" << onOneLine(notebook.name) << "\" (" << shortId(id) << ").\n";
}

void addNotebook(CommandContext& context, const AddArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::change).library();
    printNotebook(context, library, library.addNotebook(args.name), "Added the notebook");
}

struct RenameArgs {
    std::string id;
    std::string name;
};

void renameNotebook(CommandContext& context, const RenameArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::change).library();
    const NotebookId id = findNotebook(library, args.id).id;
    valueOrFail(library.renameNotebook(id, args.name));
    printNotebook(context, library, id, "The notebook is now called");
}

struct DeleteArgs {
    std::string id;
    bool trashPages = false;
};

void deleteNotebook(CommandContext& context, const DeleteArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::change).library();
    const Notebook notebook = findNotebook(library, args.id);
    const std::size_t pages = static_cast<std::size_t>(std::ranges::count_if(
        library.entries(), [&](const JournalEntry& page) { return page.notebookID == notebook.id; }));
    valueOrFail(library.deleteNotebook(notebook.id,
                                       args.trashPages ? PagesOfNotebook::goToTrash : PagesOfNotebook::becomeLoose));
    if (context.json()) {
        return context.printJsonObject([&](auto member) { member("deleted", std::vector{notebook.id}); });
    }
    context.out() << "Deleted the notebook \"" << onOneLine(notebook.name) << "\". ";
    if (pages == 0) {
        context.out() << "It had no pages.\n";
    } else if (args.trashPages) {
        context.out() << counted(pages, "page", "pages") << " went to the trash.\n";
    } else {
        context.out() << counted(pages, "page is", "pages are") << " loose now.\n";
    }
}

}  // namespace

void addNotebookCommands(CLI::App& program, Action& chosen) {
    CLI::App& group = *program.add_subcommand("notebooks", "List, add, rename and delete notebooks");
    group.require_subcommand(1);
    addCommand<NoArgs>(group, chosen, "list", "List all notebooks", [](CLI::App&, NoArgs&) {}, listNotebooks);
    addCommand<AddArgs>(
        group, chosen, "add", "Make a notebook",
        [](CLI::App& command, AddArgs& args) { addText(command, "NAME", args.name, "Its name")->required(); },
        addNotebook);
    addCommand<RenameArgs>(
        group, chosen, "rename", "Give a notebook another name",
        [](CLI::App& command, RenameArgs& args) {
            addText(command, "ID", args.id, "The notebook")->required();
            addText(command, "NAME", args.name, "Its new name")->required();
        },
        renameNotebook);
    addCommand<DeleteArgs>(
        group, chosen, "delete", "Delete a notebook; its pages become loose",
        [](CLI::App& command, DeleteArgs& args) {
            addText(command, "ID", args.id, "The notebook")->required();
            command.add_flag("--trash-pages", args.trashPages, "Move its pages to the trash instead");
        },
        deleteNotebook);
}

}  // namespace tessary
