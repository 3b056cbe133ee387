#include "cli/page_commands.h"

#include "cli/commands.h"
#include "cli/identifiers.h"
#include "library/page_search.h"
#include "library/page_tree.h"

namespace tessary {
namespace {

// ---- list ----

struct ListArgs {
    std::string notebook;
    bool loose = false;
    bool archived = false;
    bool favorites = false;
};

using PagePointers = std::vector<const JournalEntry*>;

PagePointers pagesToList(JournalStore& library, const ListArgs& args, const TextServices& text) {
    std::optional<NotebookId> notebook;
    if (!args.notebook.empty()) notebook = findNotebook(library, args.notebook).id;
    PagePointers pages;
    for (const JournalEntry& page : library.entries()) {
        if (notebook && page.notebookID != notebook) continue;
        if (args.loose && page.notebookID) continue;
        if (page.isArchived != args.archived || (args.favorites && !page.isFavorite)) continue;
        pages.push_back(&page);
    }
    library.sortForListing(pages, [&](std::string_view title) { return text.folded(title); });
    return pages;
}

std::string notebookName(const JournalStore& library, const JournalEntry& page) {
    const Notebook* const notebook = page.notebookID ? library.notebooks().find(*page.notebookID) : nullptr;
    return notebook == nullptr ? "" : onOneLine(notebook->name);
}

void printPages(CommandContext& context, const PagePointers& pages) {
    context.printJson([&](JsonWriter& writer) {
        writer.beginArray();
        for (const JournalEntry* const page : pages) writeRecord(writer, *page);
        writer.endArray();
    });
}

void listPages(CommandContext& context, const ListArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::read).library();
    const PagePointers pages = pagesToList(library, args, context.system().text);
    if (context.json()) return printPages(context, pages);
    if (pages.empty()) {
        const bool untouched = library.entries().empty() && library.loadProblems().empty();
        context.out() << (untouched ? "There are no pages yet. Bring your notes in: tessary-cli pages import FOLDER\n"
                                    : "No pages here.\n");
        return;
    }
    TextTable table({"ID", "TITLE", "NOTEBOOK", "EDITED", "TAGS"});
    for (const auto& [page, depth] : nestedPages(pages)) {
        constexpr std::size_t kDeepest = 12;
        table.add({shortId(page->id), std::string(2 * std::min(depth, kDeepest), ' ') + titleOf(*page),
                   notebookName(library, *page), localTime(lastEdited(*page), context.system().calendar),
                   onOneLine(joined(page->tags, ", "))});
    }
    table.print(context.out(), context.system().text);
}

// ---- show ----

struct IdArgs {
    std::string id;
};

void declareId(CLI::App& command, IdArgs& args) { addText(command, "ID", args.id, "The page")->required(); }

void showPage(CommandContext& context, const IdArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::read).library();
    const JournalEntry& page = findPage(library, args.id);
    if (context.json()) return context.printJsonOf(page);
    const LocalCalendar& calendar = context.system().calendar;
    std::ostream& out = context.out();
    out << titleOf(page) << "\n\nID: " << page.id.toString() << '\n';
    if (const std::string notebook = notebookName(library, page); !notebook.empty()) {
        out << "Notebook: " << notebook << '\n';
    }
    const JournalEntry* const parent = page.parentID ? library.entries().find(*page.parentID) : nullptr;
    if (parent != nullptr) out << "Subpage of: " << titleOf(*parent) << " (" << shortId(parent->id) << ")\n";
    if (!page.tags.empty()) out << "Tags: " << onOneLine(joined(page.tags, ", ")) << '\n';
    out << "Made: " << localTime(page.date, calendar) << '\n';
    if (page.updatedAt) out << "Edited: " << localTime(*page.updatedAt, calendar) << '\n';
    if (!page.body.empty()) out << '\n' << withoutControls(page.body) << (page.body.ends_with('\n') ? "" : "\n");
}

// ---- add, edit, move, delete ----

constexpr std::string_view kNone = "none";

struct EditArgs {
    std::string id;
    std::optional<std::string> title;
    std::optional<std::string> body;
    std::optional<std::string> bodyFile;
    std::optional<std::string> notebook;
    std::optional<std::string> parent;
    std::optional<std::string> tags;
    std::optional<bool> favorite;
    std::optional<bool> archive;
};

void addYesNo(CLI::App& command, const std::string& name, std::optional<bool>& target, const std::string& description) {
    command
        .add_option_function<std::string>(
            name,
            [&target, name](const std::string& text) {
                if (text != "yes" && text != "no") throw CLI::ValidationError(name, "takes yes or no");
                target = text == "yes";
            },
            description)
        ->type_name("yes|no");
}

CLI::Option* declareContent(CLI::App& command, EditArgs& args) {
    CLI::Option* const title = addText(command, "--title", args.title, "Its title");
    CLI::Option* const body = addText(command, "--body", args.body, "Its text");
    addText(command, "--body-file", args.bodyFile, "A file with its text")->type_name("FILE")->excludes(body);
    addText(command, "--notebook", args.notebook, "The notebook it goes to; \"none\" for a loose page")
        ->type_name("ID");
    addText(command, "--parent", args.parent, "The page it is a subpage of; \"none\" for none")->type_name("ID");
    addText(command, "--tags", args.tags, "Its tags, separated by commas");
    addYesNo(command, "--favorite", args.favorite, "Whether it is among the favorites");
    addYesNo(command, "--archive", args.archive, "Whether it is archived");
    return title;
}

std::vector<std::string> parseTags(std::string_view text) {
    std::vector<std::string> tags;
    for (const std::string_view piece : split(text, ',')) {
        const std::string tag(trimmed(piece));
        if (!tag.empty() && std::ranges::find(tags, tag) == tags.end()) tags.push_back(tag);
    }
    return tags;
}

std::string textOfFile(CommandContext& context, const std::string& file) {
    const FileResult<std::string> content = context.system().files.read(file);
    if (!content) throw CommandFailure(content.error().message);
    const std::string_view text = withoutByteOrderMark(*content);
    if (!isValidUtf8(text)) throw CommandFailure("\"" + file + "\" is not UTF-8 text.");
    return std::string(text);
}

/// Puts what was given into the page; notebook and parent excepted. Tells whether anything was.
bool applyContent(CommandContext& context, const EditArgs& args, JournalEntry& page) {
    std::optional<std::string> body = args.body;
    if (args.bodyFile) body = textOfFile(context, *args.bodyFile);
    if (args.title) page.title = *args.title;
    if (body) {
        page.body = *body;
        page.bodyRTF.reset();  // else the editor would go on showing the old text
    }
    if (args.tags) page.tags = parseTags(*args.tags);
    if (args.favorite) page.isFavorite = *args.favorite;
    if (args.archive) page.isArchived = *args.archive;
    return args.title || body || args.tags || args.favorite || args.archive;
}

/// Where a page is to go: absent when nothing was said, else an identity or "none".
template <class Find>
auto placeNamed(const std::optional<std::string>& text, Find find)
    -> std::optional<std::optional<decltype(find(*text))>> {
    using Place = std::optional<decltype(find(*text))>;
    if (!text) return std::nullopt;
    return *text == kNone ? Place() : Place(find(*text));
}

void printPage(CommandContext& context, const JournalEntry& page, std::string_view done) {
    if (context.json()) return context.printJsonOf(page);
    context.out() << done << " \"" << titleOf(page) << "\" (" << shortId(page.id) << ").\n";
}

struct Place {
    std::optional<std::optional<NotebookId>> notebook;
    std::optional<std::optional<PageId>> parent;
};

Place findPlace(const JournalStore& library, const EditArgs& args) {
    Place place{.notebook = placeNamed(args.notebook, [&](const auto& id) { return findNotebook(library, id).id; }),
                .parent = placeNamed(args.parent, [&](const auto& id) { return findPage(library, id).id; })};
    if (!place.notebook || !place.parent || !*place.parent) return place;
    if (library.entries().find(**place.parent)->notebookID != *place.notebook) {
        throw CommandFailure("The parent page is in another notebook. Give only one of --notebook and --parent.");
    }
    place.notebook.reset();  // the parent brings it along
    return place;
}

void addPage(CommandContext& context, const EditArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::change).library();
    const Place place = findPlace(library, args);
    JournalEntry page;
    applyContent(context, args, page);
    if (place.notebook) page.notebookID = *place.notebook;
    if (place.parent) page.parentID = *place.parent;
    const PageId id = valueOrFail(library.addPage(std::move(page)));
    printPage(context, *library.entries().find(id), "Added");
}

void editPage(CommandContext& context, const EditArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::change).library();
    const PageId id = findPage(library, args.id).id;
    const Place place = findPlace(library, args);
    JournalEntry page = *library.entries().find(id);
    const bool contentChanges = applyContent(context, args, page);
    if (!contentChanges && !place.notebook && !place.parent) throw UsageFailure("Nothing was given to change.");
    if (place.notebook) valueOrFail(library.movePage(id, *place.notebook));
    if (place.parent) valueOrFail(library.setParent(id, *place.parent));
    if (contentChanges) valueOrFail(library.updatePage(std::move(page)));
    printPage(context, *library.entries().find(id), "Changed");
}

struct MoveArgs {
    std::string id;
    std::string notebook;
    bool loose = false;
};

void movePage(CommandContext& context, const MoveArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::change).library();
    const PageId id = findPage(library, args.id).id;
    std::optional<NotebookId> notebook;
    if (!args.loose) notebook = findNotebook(library, args.notebook).id;
    valueOrFail(library.movePage(id, notebook));
    printPage(context, *library.entries().find(id), "Moved");
}

void deletePage(CommandContext& context, const IdArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::change).library();
    const JournalEntry page = findPage(library, args.id);
    const std::vector<PageId> deleted = valueOrFail(library.deletePage(page.id));
    if (context.json()) {
        return context.printJsonObject([&](auto member) { member("deleted", deleted); });
    }
    context.out() << "Moved \"" << titleOf(page) << "\"";
    if (deleted.size() > 1) context.out() << " and " << counted(deleted.size() - 1, "subpage", "subpages");
    context.out() << " to the trash. You can restore it from Trash within " << JournalStore::kTrashDays << " days.\n";
}

// ---- search ----

struct SearchArgs {
    std::vector<std::string> words;
};

void searchPages(CommandContext& context, const SearchArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::read).library();
    PageSearch search(context.system().text);
    const std::size_t limit = context.json() ? library.entries().size() : PageSearch::kUsualLimit;
    const std::vector<PageHit> hits = search.find(library.entries().snapshot(), joined(args.words, " "), limit);
    if (context.json()) {
        PagePointers pages;
        for (const PageHit& hit : hits) pages.push_back(library.entries().find(hit.page));
        return printPages(context, pages);
    }
    if (hits.empty()) context.out() << "No page holds all of these words.\n";
    for (const PageHit& hit : hits) {
        const JournalEntry& page = *library.entries().find(hit.page);
        const std::string notebook = notebookName(library, page);
        context.out() << shortId(page.id) << "  " << titleOf(page) << (notebook.empty() ? "" : "  ·  ") << notebook
                      << '\n';
        if (!hit.excerpt.empty()) context.out() << "          " << onOneLine(hit.excerpt) << '\n';
    }
    if (hits.size() == limit) context.out() << "These are the first " << limit << "; more words find fewer.\n";
}

}  // namespace

void addPageCommands(CLI::App& program, Action& chosen) {
    CLI::App& group =
        *program.add_subcommand("pages", "List, read, write, move, search and import pages, and attach PDFs");
    group.require_subcommand(1);
    addCommand<ListArgs>(
        group, chosen, "list", "List pages, archived ones only on demand",
        [](CLI::App& command, ListArgs& args) {
            CLI::Option* const notebook = addText(command, "--notebook", args.notebook, "Only those of this notebook");
            notebook->type_name("ID");
            command.add_flag("--loose", args.loose, "Only those of no notebook")->excludes(notebook);
            command.add_flag("--archived", args.archived, "Only archived ones");
            command.add_flag("--favorites", args.favorites, "Only favorites");
        },
        listPages);
    addCommand<IdArgs>(group, chosen, "show", "Print a page", declareId, showPage);
    addCommand<EditArgs>(
        group, chosen, "add", "Write a page",
        [](CLI::App& command, EditArgs& args) { declareContent(command, args)->required(); }, addPage);
    addCommand<EditArgs>(
        group, chosen, "edit", "Change a page",
        [](CLI::App& command, EditArgs& args) {
            addText(command, "ID", args.id, "The page")->required();
            declareContent(command, args);
        },
        editPage);
    addCommand<MoveArgs>(
        group, chosen, "move", "Move a page with its subpages to a notebook",
        [](CLI::App& command, MoveArgs& args) {
            addText(command, "ID", args.id, "The page")->required();
            CLI::Option_group* const where = command.add_option_group("Where");
            addText(*where, "--notebook", args.notebook, "To this notebook")->type_name("ID");
            where->add_flag("--loose", args.loose, "To the loose pages");
            where->require_option(1);
        },
        movePage);
    addCommand<IdArgs>(group, chosen, "delete", "Move a page with its subpages to the trash", declareId, deletePage);
    addCommand<SearchArgs>(
        group, chosen, "search", "Find pages by the words they hold",
        [](CLI::App& command, SearchArgs& args) {
            addText(command, "WORDS", args.words, "Words, all of which must occur")->required();
        },
        searchPages);
    addImportCommand(group, chosen);
    addPdfCommands(group, chosen);
}

}  // namespace tessary
