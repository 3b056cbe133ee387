#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text_services.h"

namespace tessary {

/// One request's worth of source text.
struct SourceChunk {
    std::string text;           ///< with its "[Page N]" markers
    std::set<std::int64_t> pages;  ///< the numbers of these markers

    friend bool operator==(const SourceChunk&, const SourceChunk&) = default;
};

/// Cuts cleaned text into chunks of at most `limit` user-perceived characters: at the end of a paragraph, else of a
/// sentence, else of a word, each in the second half of what fits, else where it must be. A chunk that begins inside a
/// page of a PDF repeats its marker.
[[nodiscard]] std::vector<SourceChunk> chunked(std::string_view cleaned, std::size_t limit,
                                               const TextServices& services);

/// Shares `count` cards over chunks by their lengths, evenly from first to last; some get none when there are more
/// chunks than cards.
[[nodiscard]] std::vector<std::int64_t> sharedCounts(const std::vector<SourceChunk>& chunks, std::int64_t count);

}  // namespace tessary
