#include <sys/ioctl.h>
#include <unistd.h>

#include "ai/grade_job.h"
#include "app/welcome.h"
#include "cli/commands.h"
#include "cli/grading.h"
#include "cli/identifiers.h"
#include "cli/review_dialog.h"

namespace tessary {
namespace {

struct ReviewArgs {
    std::string page;
    bool type = false;
};

ReviewScreen::Look lookFor(CommandContext& context, bool isTerminal) {
    constexpr std::size_t kNarrowest = 20;
    constexpr std::size_t kWidest = 100;
    ReviewScreen::Look look;
    look.color = isTerminal && !context.environment()("NO_COLOR") && context.environment()("TERM") != "dumb";
    look.showIntervals = context.system().settings.boolean("flashcards.showIntervals").value_or(true);
    winsize size{};
    if (isTerminal && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        look.columns = std::clamp<std::size_t>(size.ws_col, kNarrowest, kWidest);
    }
    return look;
}

void printSummaryJson(CommandContext& context, const ReviewSession::Summary& summary) {
    context.printJsonObject([&](auto member) {
        member("cards", summary.cards);
        member("ratings", summary.ratings);
        member("remembered", summary.remembered);
        member("seconds", summary.seconds);
        if (summary.nextDue) member("nextDue", *summary.nextDue);
    });
}

/// Offers a newcomer something to study.
void offerWelcomeNotebook(Workspace& workspace, ReviewScreen& screen, Keyboard& keyboard) {
    if (workspace.access() != StoreAccess::readWrite || !isUntouched(workspace)) return;
    screen.notice(
        "Your library is empty. Make a small notebook with three pages and a dozen cards to try it out? [Y/n]");
    const Key key = keyboard.next();
    const bool yes = key.kind == Key::Kind::enter || key.text == "y" || key.text == "Y" || key.text == " ";
    if (!yes) return screen.notice("Then bring in your own notes: tessary-cli pages import FOLDER");
    valueOrFail(makeWelcomeNotebook(workspace));
}

std::string_view whyNothing(Workspace& workspace) {
    if (workspace.library().entries().empty())
        return "There are no pages yet. Bring your notes in: tessary-cli pages import FOLDER";
    if (workspace.cards().cards().empty()) {
        return "There are no cards yet. Make some from your notes: tessary-cli cards from-notes --all";
    }
    return "Nothing is due now.";
}

/// The AI, when the user wants it to check typed answers.
JudgeAnswer judgeFor(CommandContext& context, const Interrupts& interrupts) {
    if (!context.system().settings.boolean("flashcards.aiGrading").value_or(false)) return {};
    return [&context, &interrupts](const CardContent& card, const std::string& answer) {
        const AISettings settings = readAISettings(context.system().settings);
        return gradeInBackground(context, interrupts, settings, gradeRequestFor(card, answer, settings.language));
    };
}

void review(CommandContext& context, const ReviewArgs& args) {
    Workspace& workspace = context.open(WorkspaceUse::change);
    ReviewScope scope;
    if (!args.page.empty()) scope.page = findPage(workspace.library(), args.page).id;

    SystemPorts& system = context.system();
    const bool onOut = !context.json();
    std::ostream& shown = onOut ? context.streams().out : context.err();
    const bool isTerminal = onOut ? context.streams().outIsTerminal : context.streams().errIsTerminal;
    const Interrupts interrupts;
    Keyboard keyboard(context.streams().input, context.loop(), interrupts);
    ReviewScreen screen(shown, system.text, lookFor(context, isTerminal));

    offerWelcomeNotebook(workspace, screen, keyboard);
    ReviewSession session(workspace.cards(), workspace.library(), system.settings, system.calendar, scope,
                          context.now());
    if (session.current() == nullptr) {
        screen.notice(whyNothing(workspace));
    } else {
        const AnswerMode mode = args.type ? AnswerMode::type : AnswerMode::flip;
        ReviewDialog(session, workspace, system, screen, keyboard, mode, judgeFor(context, interrupts)).run();
    }
    const ReviewSession::Summary summary = session.summary(context.now());
    if (context.json()) {
        printSummaryJson(context, summary);
    } else if (summary.ratings > 0 || summary.nextDue) {
        screen.summary(summary, context.now());
    }
}

}  // namespace

void addReviewCommand(CLI::App& program, Action& chosen) {
    addCommand<ReviewArgs>(
        program, chosen, "review", "Review what is due",
        [](CLI::App& command, ReviewArgs& args) {
            addText(command, "--page", args.page, "Only this page and its subpages")->type_name("ID");
            command.add_flag("--type", args.type, "Type the answers");
        },
        review);
}

}  // namespace tessary
