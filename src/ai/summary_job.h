#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ai/providers/ai_json_backend.h"

namespace tessary {

struct GlossaryTerm {
    std::string term;
    std::string definition;

    friend bool operator==(const GlossaryTerm&, const GlossaryTerm&) = default;
};

/// What a summary page is made of.
struct Summary {
    std::string text;  ///< paragraphs separated by blank lines; never empty
    std::vector<std::string> keyPoints;
    std::vector<GlossaryTerm> glossary;

    friend bool operator==(const Summary&, const Summary&) = default;
};

/// `language` by its English name; empty for the language of the source.
[[nodiscard]] JSONJob summaryJob(std::string_view source, std::string_view language);

[[nodiscard]] AIResult<Summary> decodeSummary(const std::string& reply);

/// The body of a summary page, in Markdown.
[[nodiscard]] std::string summaryPageBody(const Summary& summary);

}  // namespace tessary
