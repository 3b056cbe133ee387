#include <unordered_set>

#include "cli/commands.h"
#include "cli/export_target.h"
#include "cli/identifiers.h"
#include "platform/atomic_write.h"
#include "study/deck_file.h"
#include "study/note_deck.h"

namespace tessary {
namespace {

// ---- stats ----

struct PageArgs {
    std::string page;
};

void showStats(CommandContext& context, const PageArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::read);
    const PageId page = findPage(workspace.library(), args.page).id;
    const FlashcardDeckStats stats = workspace.cards().stats(page, context.now());
    if (context.json()) return context.printJsonOf(stats);
    const std::array<std::pair<std::string_view, std::int64_t>, 8> rows{{{"Cards", stats.total},
                                                                         {"New", stats.fresh},
                                                                         {"Learning", stats.learning},
                                                                         {"Review", stats.review},
                                                                         {"Due", stats.due},
                                                                         {"Suspended", stats.suspended},
                                                                         {"Flagged", stats.flagged},
                                                                         {"Leeches", stats.leeches}}};
    for (const auto& [name, value] : rows) context.out() << fmt::format("{:<10}{:>6}\n", name, value);
    if (stats.averageRecall) context.out() << fmt::format("{:<10}{:>5.0f}%\n", "Recall", *stats.averageRecall * 100);
}

// ---- from notes ----

struct FromNotesArgs {
    std::vector<std::string> pages;
    std::string notebook;
    bool all = false;
};

/// Each once, in the order asked for.
std::vector<PageId> pagesAskedFor(const JournalStore& library, const FromNotesArgs& args) {
    std::vector<PageId> pages;
    std::unordered_set<PageId> seen;
    const auto take = [&](const JournalEntry& page) {
        if (seen.insert(page.id).second) pages.push_back(page.id);
    };
    for (const std::string& prefix : args.pages) take(findPage(library, prefix));
    std::optional<NotebookId> notebook;
    if (!args.notebook.empty()) notebook = findNotebook(library, args.notebook).id;
    for (const JournalEntry& page : library.entries()) {
        if (args.all || (notebook && page.notebookID == notebook)) take(page);
    }
    return pages;
}

void makeFromNotes(CommandContext& context, const FromNotesArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    NoteDeckChange total;
    for (const PageId id : pagesAskedFor(workspace.library(), args)) {
        const JournalEntry& page = *workspace.library().entries().find(id);
        const NoteDeckChange change = updateDeckFromNote(workspace.cards(), id, page.body, context.now());
        total.added += change.added;
        total.updated += change.updated;
        total.unchanged += change.unchanged;
        if (!context.json() && change.added + change.updated > 0) {
            context.out() << fmt::format("{}: {} new, {} updated\n", titleOf(page), change.added, change.updated);
        }
    }
    if (context.json()) return context.printJsonOf(total);
    context.out() << "Added " << counted(static_cast<std::size_t>(total.added), "card", "cards") << ", updated "
                  << total.updated << "; " << total.unchanged << " stayed as they were.\n";
    if (total.added + total.updated + total.unchanged == 0) {
        context.out() << "Cards come from lines like \"Question :: Answer\", from \"Q:\" and \"A:\" lines, and from "
                         "sentences with a ==marked== or {{marked}} term.\n";
    }
}

// ---- deck files ----

struct DeckArgs {
    std::string page;
    std::string file;
};

void exportCards(CommandContext& context, const DeckArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::read);
    const PageId page = findPage(workspace.library(), args.page).id;
    std::vector<CardContent> contents;
    for (const Flashcard& card : workspace.cards().cards()) {
        if (card.pageID == page) contents.push_back(contentOf(card));
    }
    const std::filesystem::path target = exportTarget(context, args.file, "Tessary Deck.txt");
    const FileResult<void> written = writeAtomically(context.system().files, target, exportDeck(contents));
    if (!written) throw CommandFailure("Couldn't save the file: " + written.error().message);
    if (context.json()) {
        return context.printJsonObject([&](auto member) {
            member("file", target.string());
            member("cards", contents.size());
        });
    }
    context.out() << "Exported " << counted(contents.size(), "card", "cards") << " to " << target.string() << '\n';
}

std::string describe(const DeckProblem& problem) { return fmt::format("Line {}: {}", problem.line, problem.text); }

void printImport(CommandContext& context, const std::vector<CardId>& added, const std::vector<DeckProblem>& problems) {
    if (!context.json()) {
        context.out() << "Added " << counted(added.size(), "card", "cards") << ".\n";
        return;
    }
    std::vector<std::string> lines;
    for (const DeckProblem& problem : problems) lines.push_back(describe(problem));
    context.printJsonObject([&](auto member) {
        member("added", added);
        member("problems", lines);
    });
}

void importCards(CommandContext& context, const DeckArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    const PageId page = findPage(workspace.library(), args.page).id;
    const FileResult<std::string> content = context.system().files.read(args.file);
    if (!content) {
        context.err() << content.error().message << '\n';
        throw CommandFailure("Couldn't read that file.");
    }
    DeckImport deck = valueOrFail(parseDeck(*content));
    for (const DeckProblem& problem : deck.problems) context.err() << describe(problem) << '\n';
    printImport(context, workspace.cards().addCards(page, std::move(deck.cards), context.now()), deck.problems);
}

}  // namespace

void addDeckCommands(CLI::App& cards, Action& chosen) {
    addCommand<PageArgs>(
        cards, chosen, "stats", "Count the cards of a page",
        [](CLI::App& command, PageArgs& args) { addText(command, "PAGE", args.page, "The page")->required(); },
        showStats);
    addCommand<FromNotesArgs>(
        cards, chosen, "from-notes", "Make cards of the questions and marked terms in pages",
        [](CLI::App& command, FromNotesArgs& args) {
            CLI::Option_group* const which = command.add_option_group("Which");
            addText(*which, "PAGE", args.pages, "Pages");
            addText(*which, "--notebook", args.notebook, "All pages of this notebook")->type_name("ID");
            which->add_flag("--all", args.all, "All pages");
            which->require_option(1, 0);
        },
        makeFromNotes);
    const auto declareDeck = [](CLI::App& command, DeckArgs& args) {
        addText(command, "PAGE", args.page, "The page")->required();
        addText(command, "FILE", args.file, "The deck file")->required();
    };
    addCommand<DeckArgs>(cards, chosen, "export", "Write a page's cards to a deck file", declareDeck, exportCards);
    addCommand<DeckArgs>(cards, chosen, "import", "Add the cards of a deck file to a page", declareDeck, importCards);
}

}  // namespace tessary
