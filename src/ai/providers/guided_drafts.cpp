#include "ai/providers/guided_drafts.h"

namespace tessary {
namespace {

using Type = GuidedField::Type;

GuidedField field(std::string name, Type type, std::string guide = "") {
    return {.name = std::move(name), .type = type, .guide = std::move(guide), .choices = {}, .fields = {}};
}

GuidedField choice(std::string name, std::vector<std::string> choices, std::string guide = "") {
    return {.name = std::move(name),
            .type = Type::choice,
            .guide = std::move(guide),
            .choices = std::move(choices),
            .fields = {}};
}

GuidedField objects(std::string name, std::vector<GuidedField> fields, std::string guide = "") {
    return {.name = std::move(name),
            .type = Type::objectList,
            .guide = std::move(guide),
            .choices = {},
            .fields = std::move(fields)};
}

std::vector<GuidedField> cardDraft() {
    return {
        choice(
            "kind", {"basic", "cloze", "multipleChoice"},
            "basic = question and answer; cloze = a sentence with hidden terms in {{ }}; multipleChoice = a question "
            "with four options"),
        field("front", Type::text, "The question. For cloze, the sentence with each hidden term wrapped in {{ }}"),
        field("back", Type::text,
              "The concise answer. For cloze, the hidden terms joined with ' · '. For multipleChoice, the correct "
              "option"),
        field("options", Type::textList, "Exactly four options for multipleChoice, otherwise an empty list"),
        field("correctIndex", Type::integer, "0-based index of the correct option; 0 when not multipleChoice"),
        field("explanation", Type::text, "One short sentence explaining the answer, or an empty string"),
        field("page", Type::integer, "N from the [Page N] marker the card comes from"),
    };
}

}  // namespace

const GuidedShape& cardBatchShape() {
    static const GuidedShape shape{.name = "AICardBatch", .fields = {objects("cards", cardDraft())}};
    return shape;
}

const GuidedShape& summaryDraftShape() {
    static const GuidedShape shape{
        .name = "AISummaryDraft",
        .fields = {field("summary", Type::text, "A few short paragraphs separated by blank lines"),
                   field("keyPoints", Type::textList, "5 to 10 key points, one sentence each"),
                   objects("glossary", {field("term", Type::text), field("definition", Type::text)},
                           "Key terms with a one-sentence definition")}};
    return shape;
}

const GuidedShape& gradeDraftShape() {
    static const GuidedShape shape{
        .name = "AIGradeDraft",
        .fields = {choice("verdict", {"correct", "partial", "wrong"}), field("score", Type::number, "0 to 1"),
                   field("feedback", Type::text, "One short sentence saying what was missing or wrong"),
                   field("missing", Type::textList, "What the answer left out; empty when correct")}};
    return shape;
}

}  // namespace tessary
