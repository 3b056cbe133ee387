#include "cli/commands.h"
#include "cli/identifiers.h"
#include "study/scheduler.h"

namespace tessary {
namespace {

// ---- showing ----

std::string_view stateOf(const Flashcard& card) { return card.suspended ? "suspended" : enumName(card.memory.phase); }

std::string dueLabel(const Flashcard& card, Date now) {
    if (card.memory.phase == CardMemory::Phase::fresh) return "new";
    const double seconds = card.memory.due - now;
    return seconds <= 0 ? "now" : "in " + formatInterval(seconds);
}

std::string frontOf(const Flashcard& card) {
    const bool cloze = card.kind == FlashcardKind::cloze;
    return onOneLine(cloze ? clozeWithBlanks(card.front, "[…]") : card.front);
}

/// Due, not suspended, and its page in the library.
bool isWaiting(const Flashcard& card, const JournalStore& library, Date now) {
    return !card.suspended && card.memory.due <= now && library.entries().contains(card.pageID);
}

struct ListArgs {
    std::string page;
    bool due = false;
};

void listCards(CommandContext& context, const ListArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::read);
    const JournalStore& library = workspace.library();
    std::optional<PageId> page;
    if (!args.page.empty()) page = findPage(library, args.page).id;
    RecordList<Flashcard>::Snapshot cards;
    for (const RecordList<Flashcard>::Pointer& card : workspace.cards().cards().snapshot()) {
        if (page && card->pageID != *page) continue;
        if (args.due && !isWaiting(*card, library, context.now())) continue;
        cards.push_back(card);
    }
    if (context.json()) return context.printJsonOf(cards);
    if (cards.empty()) {
        context.out() << (args.due ? "No cards are due.\n" : "There are no cards here yet.\n");
        return;
    }
    TextTable table({"ID", "STATE", "DUE", "FRONT", "PAGE"});
    for (const auto& card : cards) {
        const JournalEntry* const owner = library.entries().find(card->pageID);
        table.add({shortId(card->id), std::string(stateOf(*card)), dueLabel(*card, context.now()),
                   (card->flagged ? "⚑ " : "") + frontOf(*card), owner == nullptr ? "(gone)" : titleOf(*owner)});
    }
    table.print(context.out(), context.system().text);
}

void printCard(CommandContext& context, const Flashcard& card, std::string_view done) {
    if (context.json()) return context.printJsonOf(card);
    context.out() << done << " \"" << frontOf(card) << "\" (" << shortId(card.id) << ").\n";
}

// ---- adding and editing ----

struct EditArgs {
    std::string id;
    std::optional<std::string> kind;
    std::optional<std::string> front;
    std::optional<std::string> back;
    std::vector<std::string> options;
    std::optional<std::int64_t> correct;
    std::optional<std::string> explanation;
};

void declareContent(CLI::App& command, EditArgs& args) {
    addText(command, "--kind", args.kind, "What sort of card")
        ->type_name("basic|cloze|multipleChoice")
        ->check(CLI::IsMember({"basic", "cloze", "multipleChoice"}));
    addText(command, "--front", args.front, "The question; of a cloze the sentence with {{blanks}}");
    addText(command, "--back", args.back, "The answer");
    addText(command, "--option", args.options, "A choice, or several")->allow_extra_args();
    command.add_option("--correct", args.correct, "Which choice is right, from 0")->type_name("N");
    addText(command, "--explanation", args.explanation, "Why the answer is right");
}

void applyContent(const EditArgs& args, CardContent& content) {
    if (args.kind) content.kind = enumNamed<FlashcardKind>(*args.kind).value_or(content.kind);
    if (args.front) content.front = *args.front;
    if (args.back) content.back = *args.back;
    if (!args.options.empty()) content.options = args.options;
    if (args.correct) content.correctIndex = *args.correct;
    if (args.explanation) content.explanation = *args.explanation;
    if (content.kind == FlashcardKind::multipleChoice) return;
    content.options.clear();
    content.correctIndex.reset();
}

/// The back of a cloze or of a multiple choice follows from the rest unless it is given.
void deriveBack(const EditArgs& args, CardContent& content) {
    if (args.back) return;
    if (content.kind == FlashcardKind::cloze) {
        content.back = joined(clozeTerms(content.front), kClozeTermSeparator);
    } else if (content.kind == FlashcardKind::multipleChoice && !contentProblem(content)) {
        content.back = content.options[static_cast<std::size_t>(*content.correctIndex)];
    }
}

void requireGoodContent(const CardContent& content) {
    if (const std::optional<std::string> problem = contentProblem(content)) throw CommandFailure(*problem);
}

void addCard(CommandContext& context, const EditArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    const PageId page = findPage(workspace.library(), args.id).id;
    CardContent content;
    applyContent(args, content);
    deriveBack(args, content);
    if (content.kind == FlashcardKind::basic && trimmed(content.back).empty()) {
        throw CommandFailure("The card needs an answer: give it with --back.");
    }
    requireGoodContent(content);
    const CardId id = workspace.cards().addCards(page, {std::move(content)}, context.now()).front();
    printCard(context, *workspace.cards().cards().find(id), "Added the card");
}

void editCard(CommandContext& context, const EditArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    const Flashcard& card = findCard(workspace.cards(), args.id);
    CardContent content = contentOf(card);
    applyContent(args, content);
    if (args.kind || args.front || !args.options.empty() || args.correct) deriveBack(args, content);
    if (content == contentOf(card)) throw UsageFailure("Nothing was given to change.");
    requireGoodContent(content);
    const CardId id = card.id;
    workspace.cards().edit(id, std::move(content));
    printCard(context, *workspace.cards().cards().find(id), "Changed the card");
}

// ---- one card ----

struct IdArgs {
    std::string id;
};

void declareId(CLI::App& command, IdArgs& args) { addText(command, "ID", args.id, "The card")->required(); }

void deleteCard(CommandContext& context, const IdArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    const Flashcard card = findCard(workspace.cards(), args.id);
    workspace.cards().remove(card.id);
    if (context.json()) {
        return context.printJsonObject([&](auto member) { member("deleted", std::vector{card.id}); });
    }
    context.out() << "Deleted the card \"" << frontOf(card) << "\".\n";
}

/// A change of one mark of a card.
using Mark = bool (FlashcardStore::*)(CardId, bool);

void setMark(CommandContext& context, const IdArgs& args, Mark mark, bool value, std::string_view done) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    const CardId id = findCard(workspace.cards(), args.id).id;
    (workspace.cards().*mark)(id, value);
    printCard(context, *workspace.cards().cards().find(id), done);
}

void suspendCard(CommandContext& context, const IdArgs& args) {
    setMark(context, args, &FlashcardStore::setSuspended, true, "Suspended");
}
void unsuspendCard(CommandContext& context, const IdArgs& args) {
    setMark(context, args, &FlashcardStore::setSuspended, false, "Back in reviews:");
}
void flagCard(CommandContext& context, const IdArgs& args) {
    setMark(context, args, &FlashcardStore::setFlagged, true, "Flagged");
}
void unflagCard(CommandContext& context, const IdArgs& args) {
    setMark(context, args, &FlashcardStore::setFlagged, false, "No longer flagged:");
}

struct ResetArgs {
    std::string id;
    std::string page;
};

void resetCards(CommandContext& context, const ResetArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    if (!args.id.empty()) {
        const CardId id = findCard(workspace.cards(), args.id).id;
        workspace.cards().reset(id, context.now());
        return printCard(context, *workspace.cards().cards().find(id), "It counts as new again:");
    }
    const std::size_t touched = workspace.cards().resetPage(findPage(workspace.library(), args.page).id, context.now());
    if (context.json()) {
        return context.printJsonObject([&](auto member) { member("reset", touched); });
    }
    context.out() << "Reset " << counted(touched, "card", "cards") << ". They'll all count as new again.\n";
}

// ---- rating ----

struct RateArgs {
    std::string id;
    std::string rating;
};

void rateCard(CommandContext& context, const RateArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    const CardId id = findCard(workspace.cards(), args.id).id;
    const auto rated = workspace.cards().rate(id, *enumNamed<Rating>(args.rating), context.now());
    const Flashcard& card = *workspace.cards().cards().find(id);
    const bool suspended = rated && rated->suspendedAsLeech;
    if (context.json()) {
        return context.printJson([&](JsonWriter& writer) {
            writer.beginObject();
            writeMembers(writer, card);
            writer.key("suspendedAsLeech");
            writer.boolean(suspended);
            writer.endObject();
        });
    }
    context.out() << "Due in " << formatInterval(card.memory.due - context.now()) << ": " << frontOf(card) << '\n';
    if (suspended) context.out() << "Forgotten too often, so it's suspended\n";
}

void previewCard(CommandContext& context, const IdArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::read);
    const Flashcard& card = findCard(workspace.cards(), args.id);
    const Date now = context.now();
    const RatingOutcomes outcomes = previewRatings(card.memory, now, desiredRetention(context.system().settings));
    const std::array<std::pair<std::string_view, const CardMemory*>, 4> all{
        {{"again", &outcomes.again}, {"hard", &outcomes.hard}, {"good", &outcomes.good}, {"easy", &outcomes.easy}}};
    if (context.json()) {
        return context.printJson([&](JsonWriter& writer) {
            writer.beginObject();
            for (const auto& [name, memory] : all) {
                writer.key(name);
                writer.beginObject();
                writer.key("label");
                writer.string(formatInterval(memory->due - now));
                writer.key("due");
                writer.date(memory->due);
                writer.endObject();
            }
            writer.endObject();
        });
    }
    for (const auto& [name, memory] : all) {
        context.out() << fmt::format("{:<6}{:>6}  {}\n", name, formatInterval(memory->due - now),
                                     localTime(memory->due, context.system().calendar));
    }
}

void addOneCardCommands(CLI::App& group, Action& chosen) {
    addCommand<IdArgs>(group, chosen, "delete", "Delete a card", declareId, deleteCard);
    addCommand<IdArgs>(group, chosen, "suspend", "Take a card out of reviews", declareId, suspendCard);
    addCommand<IdArgs>(group, chosen, "unsuspend", "Take a card back into reviews", declareId, unsuspendCard);
    addCommand<IdArgs>(group, chosen, "flag", "Mark a card", declareId, flagCard);
    addCommand<IdArgs>(group, chosen, "unflag", "Remove the mark of a card", declareId, unflagCard);
    addCommand<ResetArgs>(
        group, chosen, "reset", "Forget the progress of a card, or of all cards of a page",
        [](CLI::App& command, ResetArgs& args) {
            CLI::Option_group* const which = command.add_option_group("Which");
            addText(*which, "ID", args.id, "The card");
            addText(*which, "--page", args.page, "All cards of this page")->type_name("ID");
            which->require_option(1);
        },
        resetCards);
    addCommand<RateArgs>(
        group, chosen, "rate", "Rate how well you remembered a card",
        [](CLI::App& command, RateArgs& args) {
            addText(command, "ID", args.id, "The card")->required();
            addText(command, "RATING", args.rating, "again, hard, good or easy")
                ->required()
                ->check(CLI::IsMember({"again", "hard", "good", "easy"}));
        },
        rateCard);
    addCommand<IdArgs>(group, chosen, "preview", "Show when each rating would bring the card back", declareId,
                       previewCard);
}

}  // namespace

void addCardCommands(CLI::App& program, Action& chosen) {
    CLI::App& group = *program.add_subcommand("cards", "List, write, rate, import and export cards");
    group.require_subcommand(1);
    addCommand<ListArgs>(
        group, chosen, "list", "List cards",
        [](CLI::App& command, ListArgs& args) {
            addText(command, "--page", args.page, "Only those of this page")->type_name("ID");
            command.add_flag("--due", args.due, "Only those that can be reviewed now");
        },
        listCards);
    addCommand<EditArgs>(
        group, chosen, "add", "Write a card",
        [](CLI::App& command, EditArgs& args) {
            addText(command, "PAGE", args.id, "The page it belongs to")->required();
            declareContent(command, args);
        },
        addCard);
    addCommand<EditArgs>(
        group, chosen, "edit", "Change a card; it keeps its memory",
        [](CLI::App& command, EditArgs& args) {
            addText(command, "ID", args.id, "The card")->required();
            declareContent(command, args);
        },
        editCard);
    addOneCardCommands(group, chosen);
    addDeckCommands(group, chosen);
}

}  // namespace tessary
