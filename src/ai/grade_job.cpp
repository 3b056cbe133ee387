#include "ai/grade_job.h"

#include <algorithm>

#include "ai/reply_json.h"
#include "base/text.h"

namespace tessary {
namespace {

constexpr std::string_view kShape =
    R"({"verdict":"correct" | "partial" | "wrong","score":0.0,"feedback":"…","missing":["…"]})";

constexpr std::string_view kSchema =
    R"({"type":"object","properties":{"verdict":{"type":"string","enum":["correct","partial","wrong"]},)"
    R"("score":{"type":"number"},"feedback":{"type":"string"},"missing":{"type":"array","items":{"type":"string"}}},)"
    R"("required":["verdict","score","feedback","missing"]})";

constexpr std::string_view kBeforeLanguage =
    "You grade a student's answer to a flashcard question against the expected answer. Judge meaning, not wording.\n"
    "- correct: same meaning. Synonyms, paraphrases, a different order, abbreviations, extra correct detail and minor "
    "spelling, typing or capitalisation mistakes all count as correct.\n"
    "- partial: the right idea but a key element of the expected answer is missing or imprecise (for example one of "
    "two required parts).\n"
    "- wrong: a different meaning, a contradiction, or empty or unrelated.\n"
    "score is 1 for correct, 0.4 to 0.7 for partial, 0 to 0.2 for wrong. feedback is one short sentence in ";

constexpr std::string_view kAfterLanguage =
    " that says what was missing or wrong (a brief confirmation when correct). missing lists the key elements the "
    "answer left out (empty when correct).";

std::optional<AnswerGrade::Verdict> verdictNamed(std::string_view word) {
    const std::string verdict = asciiLowered(word);
    if (verdict == "incorrect") return AnswerGrade::Verdict::wrong;
    return enumNamed<AnswerGrade::Verdict>(verdict);
}

double usualScore(AnswerGrade::Verdict verdict) {
    switch (verdict) {
        case AnswerGrade::Verdict::correct: return 1;
        case AnswerGrade::Verdict::partial: return 0.5;
        case AnswerGrade::Verdict::wrong: break;
    }
    return 0;
}

}  // namespace

JSONJob gradeJob(const GradeRequest& request) {
    const std::string_view answer = trimmed(request.answer);
    return {.system = std::string(kBeforeLanguage) + std::string(languagePhrase(request.language)) +
                      std::string(kAfterLanguage),
            .user = "Question: " + request.question + "\nExpected answer: " + request.expected +
                    "\nStudent's answer: " + (answer.empty() ? "(empty)" : std::string(answer)),
            .name = "save_grade",
            .schema = kSchema,
            .shape = kShape};
}

AIResult<AnswerGrade> decodeGrade(const std::string& reply) {
    const std::unique_ptr<JsonDocument> document = parseReply(reply);
    if (!document) return std::unexpected(AIError::badResponse("it didn't return valid JSON"));
    const JsonValue root = document->root();
    if (root.kind() != JsonKind::object) return std::unexpected(AIError::badResponse("the grade wasn't an object"));
    const std::optional<AnswerGrade::Verdict> verdict = verdictNamed(textIn(root, {"verdict"}));
    if (!verdict) return std::unexpected(AIError::badResponse("no verdict"));
    return AnswerGrade{.verdict = *verdict,
                       .score = std::clamp(numberIn(root, "score").value_or(usualScore(*verdict)), 0.0, 1.0),
                       .feedback = textIn(root, {"feedback"}),
                       .missing = textsIn(root, {"missing"})};
}

GradeRequest gradeRequestFor(const CardContent& card, std::string answer, std::string language) {
    const bool isCloze = card.kind == FlashcardKind::cloze;
    return {.question = isCloze ? clozeWithBlanks(card.front, "_____") : card.front,
            .expected = isCloze ? joined(clozeTerms(card.front), kClozeTermSeparator) : card.back,
            .answer = std::move(answer),
            .language = std::move(language)};
}

}  // namespace tessary
