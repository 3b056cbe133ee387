#include "ai/card_job.h"
#include "base/text.h"

namespace tessary {
namespace {

constexpr std::string_view kShape =
    R"({"cards":[{"kind":"basic" | "cloze" | "multiple_choice","front":"…","back":"…","options":["…","…","…","…"],)"
    R"("correct_index":0,"explanation":"…","page":12}]})"
    "  (options and correct_index only for multiple_choice; page is N of the [Page N] marker)";

constexpr std::string_view kSchema =
    R"({"type":"object","properties":{"cards":{"type":"array","items":{"type":"object","properties":{)"
    R"("kind":{"type":"string","enum":["basic","cloze","multiple_choice"]},"front":{"type":"string"},)"
    R"("back":{"type":"string"},"options":{"type":"array","items":{"type":"string"}},)"
    R"("correct_index":{"type":"integer"},"explanation":{"type":"string"},)"
    R"("page":{"type":"integer","description":"N of the [Page N] marker the card comes from"}}}}},)"
    R"("required":["cards"]})";

constexpr std::string_view kBasicLine = "basic: front is a direct question, back a short answer.";

constexpr std::string_view kClozeLine =
    "cloze: front is a self-contained sentence with 1 or 2 key terms (names, numbers, technical terms; never filler "
    "words) wrapped in {{…}}, e.g. \"The {{mitochondrion}} produces ATP.\"; the context must make one answer fit. back "
    "is the hidden terms joined with \" · \".";

constexpr std::string_view kMultipleChoiceLine =
    "multiple choice: front is the question; exactly 4 options with exactly one correct; the 3 distractors are "
    "plausible, same type, length and style as the correct one, never \"all/none of the above\"; correctIndex is the "
    "0-based index of the correct option; back is its text; add a one-line explanation.";

constexpr std::string_view kPrinciples =
    "\nPrinciples:\n"
    "- One atomic fact per card, as little information as possible; split lists and multi-part ideas into several "
    "cards.\n"
    "- Each question must be answerable without seeing the document: never write \"according to the "
    "text/passage/author\" and never refer to \"above\", figures or pages.\n"
    "- Ask what, why, how, which or when; no yes/no or true/false questions.\n"
    "- Answers are short, at most about 25 words, and never repeat the question.\n"
    "- Skip trivia, minor examples and anything not worth remembering. No duplicate or near-duplicate cards.\n"
    "- explanation: one short line of why or context only where it helps, otherwise empty.\n"
    "Each card carries the page it came from: the number N of the nearest preceding \"[Page N]\" marker in the source.";

std::string_view phraseOf(CardDifficulty difficulty) {
    switch (difficulty) {
        case CardDifficulty::basic: return "basic: definitions, terms and key facts";
        case CardDifficulty::standard: return "standard: concepts and the relationships between them";
        case CardDifficulty::advanced: break;
    }
    return "advanced: application, comparison and why/how reasoning";
}

std::string kindLines(const CardRequest& request) {
    std::vector<std::string> lines;
    if (request.kinds.contains(FlashcardKind::basic)) lines.emplace_back(kBasicLine);
    if (request.kinds.contains(FlashcardKind::cloze)) lines.emplace_back(kClozeLine);
    if (request.kinds.contains(FlashcardKind::multipleChoice)) lines.emplace_back(kMultipleChoiceLine);
    return joined(lines, "\n- ");
}

std::string systemPrompt(const CardRequest& request) {
    std::string prompt =
        "You are an expert tutor writing study flashcards. Use only the source text you are given, never outside "
        "facts.\nWrite every card in ";
    prompt += languagePhrase(request.language);
    prompt += ".\nLevel — ";
    prompt += phraseOf(request.difficulty);
    prompt += ".\nWrite up to " + std::to_string(request.count) +
              " cards (fewer if the text has fewer facts worth remembering), spread over these kinds:\n- ";
    prompt += kindLines(request);
    prompt += kPrinciples;
    if (request.focus) {
        prompt +=
            "\nThe student asked to focus on: " + *request.focus + ". Prioritise that and skip unrelated material.";
    }
    return prompt;
}

std::string userPrompt(std::string_view source, const std::vector<std::string>& existingFronts) {
    std::string prompt(source);
    if (existingFronts.empty()) return prompt;
    prompt += "\n\nCards that already exist (do not repeat them):";
    for (const std::string& front : existingFronts) {
        prompt += '\n';
        prompt += replacedAll(replacedAll(front, "\r", ""), "\n", " ");
    }
    return prompt;
}

}  // namespace

JSONJob cardJob(std::string_view source, const CardRequest& request, const std::vector<std::string>& existingFronts) {
    return {.system = systemPrompt(request),
            .user = userPrompt(source, existingFronts),
            .name = "save_flashcards",
            .schema = kSchema,
            .shape = kShape};
}

}  // namespace tessary
