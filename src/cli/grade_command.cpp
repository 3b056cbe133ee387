#include "ai/grade_job.h"
#include "cli/background.h"
#include "cli/commands.h"
#include "cli/grading.h"
#include "cli/identifiers.h"

namespace tessary {
namespace {

struct GradeArgs {
    std::string card;
    std::string answer;
};

std::string_view wordOf(AnswerGrade::Verdict verdict) {
    switch (verdict) {
        case AnswerGrade::Verdict::correct: return "Correct";
        case AnswerGrade::Verdict::partial: return "Partly correct";
        case AnswerGrade::Verdict::wrong: break;
    }
    return "Wrong";
}

void grade(CommandContext& context, const GradeArgs& args) {
    const Flashcard& card = findCard(context.open(WorkspaceUse::read).cards(), args.card);
    const AISettings settings = readAISettings(context.system().settings);
    const Interrupts interrupts;
    const AIResult<AnswerGrade> grade = gradeInBackground(
        context, interrupts, settings, gradeRequestFor(contentOf(card), args.answer, settings.language));
    if (!grade) throw CommandFailure(grade.error().text());
    if (context.json()) return context.printJsonOf(*grade);
    context.out() << wordOf(grade->verdict) << fmt::format(" ({:.0f} %)", grade->score * 100);
    if (!grade->feedback.empty()) context.out() << ": " << onOneLine(grade->feedback);
    context.out() << '\n';
    if (!grade->missing.empty()) context.out() << "Missing: " << onOneLine(joined(grade->missing, ", ")) << '\n';
}

}  // namespace

AIResult<AnswerGrade> gradeInBackground(CommandContext& context, const Interrupts& interrupts,
                                        const AISettings& settings, GradeRequest request) {
    AISystem& ai = context.ai();
    AnswerGrader grader(context.loop(), [&ai](const AISettings& asked, std::stop_token stop) {
        return ai.makeProvider(asked, std::move(stop));
    });
    std::optional<AIResult<AnswerGrade>> result;
    grader.grade(settings, std::move(request), [&](AIResult<AnswerGrade> judged) { result = std::move(judged); });
    runLoopUntil(context.loop(), interrupts, [&] { return result.has_value(); }, [&] { grader.cancel(); });
    return *std::move(result);
}

void addGradeCommand(CLI::App& program, Action& chosen) {
    addCommand<GradeArgs>(
        program, chosen, "grade", "Have the AI judge an answer to a card",
        [](CLI::App& command, GradeArgs& args) {
            addText(command, "CARD", args.card, "The card")->required();
            addText(command, "--answer", args.answer, "What you would answer")->required();
        },
        grade);
}

}  // namespace tessary
