#include "ai/summary_job.h"

#include "ai/card_request.h"
#include "ai/reply_json.h"

namespace tessary {
namespace {

constexpr std::string_view kShape =
    R"({"summary":"paragraphs separated by blank lines","key_points":["…"],"glossary":[{"term":"…","definition":"…"}]})";

constexpr std::string_view kSchema =
    R"({"type":"object","properties":{"summary":{"type":"string"},)"
    R"("key_points":{"type":"array","items":{"type":"string"}},)"
    R"("glossary":{"type":"array","items":{"type":"object","properties":{"term":{"type":"string"},)"
    R"("definition":{"type":"string"}},"required":["term","definition"]}}},)"
    R"("required":["summary","key_points","glossary"]})";

std::vector<GlossaryTerm> glossaryIn(JsonValue object) {
    std::vector<GlossaryTerm> glossary;
    const std::optional<JsonValue> list = object.member("glossary");
    if (!list || list->kind() != JsonKind::array) return glossary;
    list->forEachElement([&](JsonValue entry) {
        GlossaryTerm term{.term = textIn(entry, {"term", "word"}), .definition = textIn(entry, {"definition"})};
        if (!term.term.empty() && !term.definition.empty()) glossary.push_back(std::move(term));
    });
    return glossary;
}

}  // namespace

JSONJob summaryJob(std::string_view source, std::string_view language) {
    const std::string system =
        "You are an expert tutor. Summarise the source text for a student, in " +
        std::string(languagePhrase(language)) +
        ", using only what the text says.\nGive: a summary of a few short paragraphs separated by blank lines; 5 to 10 "
        "key points, one sentence each; a glossary of the key terms with a one-sentence definition each.";
    return {.system = system, .user = std::string(source), .name = "save_summary", .schema = kSchema, .shape = kShape};
}

AIResult<Summary> decodeSummary(const std::string& reply) {
    const std::unique_ptr<JsonDocument> document = parseReply(reply);
    if (!document) return std::unexpected(AIError::badResponse("it didn't return valid JSON"));
    const JsonValue root = document->root();
    if (root.kind() != JsonKind::object) {
        return std::unexpected(AIError::badResponse("the summary wasn't an object"));
    }
    Summary summary{.text = textIn(root, {"summary"}),
                    .keyPoints = textsIn(root, {"key_points", "keyPoints"}),
                    .glossary = glossaryIn(root)};
    if (summary.text.empty()) return std::unexpected(AIError::badResponse("the summary was empty"));
    return summary;
}

std::string summaryPageBody(const Summary& summary) {
    std::string body = summary.text;
    if (!summary.keyPoints.empty()) body += "\n\n## Key points\n";
    for (const std::string& point : summary.keyPoints) body += "\n- " + point;
    if (!summary.glossary.empty()) body += "\n\n## Glossary\n";
    for (const GlossaryTerm& entry : summary.glossary) body += "\n- **" + entry.term + "**: " + entry.definition;
    return body + "\n";
}

}  // namespace tessary
