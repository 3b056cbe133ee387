#include "cli/background.h"
#include "cli/commands.h"
#include "cli/identifiers.h"
#include "cli/named_values.h"
#include "cli/progress_line.h"

namespace tessary {
namespace {

struct GenerateArgs {
    std::vector<std::string> pages;
    std::optional<std::string> source;
    std::optional<std::string> kinds;
    std::optional<std::int64_t> count;
    std::optional<std::string> amount;
    std::optional<std::string> difficulty;
    std::optional<std::string> focus;
    std::optional<std::string> language;
    std::optional<std::string> provider;
    bool noSummary = false;
};

std::set<FlashcardKind> parseKinds(const std::string& list) {
    std::set<FlashcardKind> kinds;
    for (const std::string_view name : split(list, ',')) {
        kinds.insert(namedOrFail<FlashcardKind>("--kinds", trimmed(name)));
    }
    return kinds;
}

/// The settings, with what was asked for put over them.
GenerationOptions optionsFrom(const GenerateArgs& args, const Settings& settings) {
    GenerationOptions options = generationOptions(settings);
    if (args.provider) options.settings.provider = providerNamed(*args.provider);
    if (args.source) options.source = namedOrFail<SourceChoice>("--source", *args.source);
    if (args.kinds) options.request.kinds = parseKinds(*args.kinds);
    if (args.amount) options.amount = namedOrFail<CardAmount>("--amount", *args.amount);
    if (args.difficulty) options.request.difficulty = namedOrFail<CardDifficulty>("--difficulty", *args.difficulty);
    if (args.language) options.request.language = languageNamed(*args.language);
    if (args.focus && !trimmed(*args.focus).empty()) options.request.focus = std::string(trimmed(*args.focus));
    if (args.noSummary) options.makeSummary = false;
    if (args.count) {
        options.request.count = *args.count;
        options.amount.reset();
    }
    return options;
}

/// What came of one page.
struct PageReport {
    PageId page;
    std::string title;
    FlashcardGenerator::State state;
};

PageReport generateFor(CommandContext& context, Workspace& workspace, PageId page, const GenerationOptions& options,
                       const Interrupts& interrupts) {
    FlashcardGenerator generator(page, context.ai().generatorServices(workspace));
    PageReport report{.page = page, .title = titleOf(*workspace.library().entries().find(page)), .state = {}};
    {
        ProgressLine line(context.streams());
        const Subscription watching = generator.changed.connect([&](const FlashcardGenerator::State& state) {
            if (!generator.isRunning()) return;
            const bool reading = state.progress.phase == GenerationProgress::Phase::reading;
            line.show(state.progress.fraction, state.progress.text,
                      reading ? ProgressLine::Weight::detail : ProgressLine::Weight::step);
        });
        valueOrFail(generator.start(options));
        runLoopUntil(context.loop(), interrupts, [&] { return !generator.isRunning(); }, [&] { generator.cancel(); });
    }
    report.state = generator.state();
    for (const std::string& problem : report.state.problems) context.err() << onOneLine(problem) << '\n';
    return report;
}

void printReportsJson(CommandContext& context, Workspace& workspace, const std::vector<PageReport>& reports) {
    context.printJson([&](JsonWriter& writer) {
        writer.beginArray();
        for (const PageReport& report : reports) {
            writer.beginObject();
            writer.key("page");
            writeValue(writer, report.page);
            writer.key("added");
            writer.integer(static_cast<std::int64_t>(report.state.cards.size()));
            writer.key("cards");
            writer.beginArray();
            for (const CardId card : report.state.cards) writeRecord(writer, *workspace.cards().cards().find(card));
            writer.endArray();
            if (report.state.summaryPage) {
                writer.key("summaryPage");
                writeValue(writer, *report.state.summaryPage);
            }
            writer.key("problems");
            writeValue(writer, report.state.problems);
            if (report.state.phase != FlashcardGenerator::Phase::done) {
                writer.key("error");
                writer.string(report.state.text);
            }
            writer.endObject();
        }
        writer.endArray();
    });
}

void printReports(CommandContext& context, const std::vector<PageReport>& reports) {
    for (const PageReport& report : reports) {
        context.out() << '"' << report.title << "\": " << report.state.text;
        if (report.state.summaryPage)
            context.out() << ", and a summary page (" << shortId(*report.state.summaryPage) << ")";
        context.out() << ".\n";
    }
}

/// Saves what there is before it fails the command.
[[noreturn]] void failWith(Workspace& workspace, const std::string& text, std::size_t kept) {
    valueOrFail(workspace.flush());
    throw CommandFailure(kept == 0 ? text : text + ". " + counted(kept, "card is", "cards are") + " kept.");
}

void generate(CommandContext& context, const GenerateArgs& args) {
    const GenerationOptions options = optionsFrom(args, context.system().settings);
    Workspace& workspace = context.open(WorkspaceUse::change);
    std::vector<PageId> pages;
    for (const std::string& page : args.pages) pages.push_back(findPage(workspace.library(), page).id);
    const Interrupts interrupts;
    std::vector<PageReport> reports;
    std::size_t added = 0;
    for (const PageId page : pages) {
        reports.push_back(generateFor(context, workspace, page, options, interrupts));
        const FlashcardGenerator::State& state = reports.back().state;
        added += state.cards.size();
        if (state.phase == FlashcardGenerator::Phase::cancelled) failWith(workspace, state.text, added);
        if (state.phase == FlashcardGenerator::Phase::done) continue;
        if (pages.size() == 1) failWith(workspace, state.text, added);
        context.err() << '"' << reports.back().title << "\": " << state.text << '\n';
        context.setFailed();
    }
    context.json() ? printReportsJson(context, workspace, reports) : printReports(context, reports);
}

}  // namespace

void addGenerateCommand(CLI::App& program, Action& chosen) {
    addCommand<GenerateArgs>(
        program, chosen, "generate", "Have the AI write cards and a summary of pages",
        [](CLI::App& command, GenerateArgs& args) {
            addText(command, "PAGE", args.pages, "Pages")->required();
            addText(command, "--source", args.source, "whole, pages or highlights");
            addText(command, "--kinds", args.kinds, "Of basic, cloze and multipleChoice, separated by commas");
            CLI::Option* const count =
                command.add_option("--count", args.count, "The most cards wanted")->check(CLI::Range(1, 1000));
            addText(command, "--amount", args.amount, "normal or many, by the length of the source")->excludes(count);
            addText(command, "--difficulty", args.difficulty, "basic, standard or advanced");
            addText(command, "--focus", args.focus, "What you want to learn most");
            addText(command, "--language", args.language, "Of the cards; \"system\" for that of the source");
            addText(command, "--provider", args.provider, "Instead of the one in the settings");
            command.add_flag("--no-summary", args.noSummary, "Write no summary page");
        },
        generate);
}

}  // namespace tessary
