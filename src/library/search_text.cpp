#include "library/search_text.h"

#include <algorithm>

#include "base/text.h"

namespace tessary {
namespace {

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

/// Spans that touch or overlap become one.
std::vector<TextSpan> merged(std::vector<TextSpan> spans) {
    std::ranges::sort(spans, {}, &TextSpan::start);
    std::vector<TextSpan> apart;
    for (const TextSpan& span : spans) {
        if (!apart.empty() && span.start <= apart.back().start + apart.back().length) {
            TextSpan& last = apart.back();
            last.length = std::max(last.start + last.length, span.start + span.length) - last.start;
        } else {
            apart.push_back(span);
        }
    }
    return apart;
}

}  // namespace

/// Most words even of a text in German or French are ASCII: only the others go the slow way.
std::string searchFolded(std::string_view text, const TextServices& services) {
    constexpr std::string_view kBlanks = " \n";
    std::string folded;
    while (!text.empty()) {
        const auto other =
            static_cast<std::size_t>(std::ranges::find_if_not(text, [](char c) { return isAscii(c); }) - text.begin());
        if (other == text.size()) return folded += asciiLowered(text);
        const std::size_t wordStart = text.find_last_of(kBlanks, other) + 1;  // 0 when there is none
        const std::size_t wordEnd = std::min(text.find_first_of(kBlanks, other), text.size());
        folded += asciiLowered(text.substr(0, wordStart));
        folded += services.folded(text.substr(wordStart, wordEnd - wordStart));
        text.remove_prefix(wordEnd);
    }
    return folded;
}

std::vector<std::string> searchWords(std::string_view query, const TextServices& services) {
    std::vector<std::string> words;
    std::string blanksAsSpaces(query);
    std::ranges::replace_if(blanksAsSpaces, [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    bool isQuoted = false;
    for (const std::string_view part : split(blanksAsSpaces, '"')) {
        const std::vector<std::string_view> pieces = isQuoted ? std::vector{part} : split(part, ' ');
        for (const std::string_view piece : pieces) words.push_back(searchFolded(trimmed(piece), services));
        isQuoted = !isQuoted;
    }
    std::erase_if(words, [](const std::string& word) { return word.empty(); });
    // A long word is found in few pages, which spares the search for the others.
    std::ranges::stable_sort(words, std::ranges::greater{}, &std::string::size);
    return words;
}

/// Halving costs no more than folding twice.
std::size_t originalOffset(std::string_view line, std::size_t foldedOffset, const TextServices& services) {
    std::size_t start = 0;
    while (true) {
        std::size_t half = (line.size() + 1) / 2;
        while (half < line.size() && isContinuation(line[half])) ++half;
        if (half >= line.size()) {
            half = line.size() / 2;
            while (half > 0 && isContinuation(line[half])) --half;
        }
        if (half == 0 || half == line.size()) return start;
        const std::size_t foldedHalf = searchFolded(line.substr(0, half), services).size();
        if (foldedHalf > foldedOffset) {
            line = line.substr(0, half);
        } else {
            foldedOffset -= foldedHalf;
            start += half;
            line.remove_prefix(half);
        }
    }
}

std::vector<TextSpan> searchMarks(std::string_view text, const std::vector<std::string>& words,
                                  const TextServices& services) {
    const std::string folded = searchFolded(text, services);
    std::vector<TextSpan> spans;
    for (const std::string& word : words) {
        if (word.empty()) continue;
        for (std::size_t at = folded.find(word); at != std::string::npos; at = folded.find(word, at + word.size())) {
            const std::size_t start = originalOffset(text, at, services);
            // The last character as a whole, accents that stand on their own included.
            std::size_t end =
                at + word.size() == folded.size() ? text.size() : originalOffset(text, at + word.size(), services);
            const std::size_t last = originalOffset(text, at + word.size() - 1, services);
            const std::string_view tail = text.substr(last);
            end = std::max(end, last + services.prefix(tail, 1).size());
            spans.push_back({.start = start, .length = end - start});
        }
    }
    return merged(std::move(spans));
}

}  // namespace tessary
