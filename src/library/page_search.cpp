#include "library/page_search.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "base/text.h"
#include "library/listing.h"
#include "library/search_text.h"

namespace tessary {
namespace {

constexpr std::size_t kSampledBytes = 1024;       // of each page
constexpr std::size_t kExcerptCharacters = 120;   // user-perceived
constexpr std::size_t kCharactersBefore = 40;     // of them before the match
constexpr std::size_t kLookBack = 1024;           // bytes before a match that are looked at
constexpr std::string_view kEllipsis = "…";

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// Finds one word in many texts by its rarest byte.
class Needle {
public:
    Needle(std::string_view word, const std::array<std::uint64_t, 256>& byteCounts) : word_(word) {
        const auto count = [&](char c) { return byteCounts[static_cast<unsigned char>(c)]; };
        rarest_ = static_cast<std::size_t>(std::ranges::min_element(word, {}, count) - word.begin());
    }

    [[nodiscard]] std::string_view word() const { return word_; }

    [[nodiscard]] bool isIn(std::string_view text) const {
        if (text.size() < word_.size()) return false;
        const char* at = text.data() + rarest_;
        const char* const end = at + (text.size() - word_.size()) + 1;
        while (at < end) {
            at = static_cast<const char*>(std::memchr(at, word_[rarest_], static_cast<std::size_t>(end - at)));
            if (at == nullptr) return false;
            if (std::memcmp(at - rarest_, word_.data(), word_.size()) == 0) return true;
            ++at;
        }
        return false;
    }

private:
    std::string_view word_;  ///< not empty
    std::size_t rarest_ = 0;
};

/// Absent when a word is missing.
template <class FoldedPage>
std::optional<PageHit::Where> matchIn(const FoldedPage& page, const std::vector<Needle>& words) {
    bool allInTitle = true;
    bool oneIsTag = false;
    for (const Needle& word : words) {
        const bool inTitle = word.isIn(page.title);
        const bool inTags = std::ranges::any_of(page.tags, [&](const std::string& tag) { return word.isIn(tag); });
        if (!inTitle && !inTags && !word.isIn(page.body)) return std::nullopt;
        allInTitle = allInTitle && inTitle;
        oneIsTag = oneIsTag || (inTags && std::ranges::find(page.tags, word.word()) != page.tags.end());
    }
    if (allInTitle) return PageHit::Where::title;
    return oneIsTag ? PageHit::Where::tag : PageHit::Where::body;
}

/// Whether what holds all words of `later` holds all of `earlier` too.
bool narrows(const std::vector<std::string>& earlier, const std::vector<std::string>& later) {
    return std::ranges::all_of(earlier, [&](const std::string& word) {
        return std::ranges::any_of(later, [&](const std::string& longer) { return longer.contains(word); });
    });
}

std::size_t firstMatch(std::string_view folded, const std::vector<std::string>& words) {
    std::size_t first = std::string_view::npos;
    for (const std::string& word : words) first = std::min(first, folded.find(word));
    return first;
}

/// Where the excerpt begins: some characters before the match, at a word if there is one.
std::size_t excerptStart(std::string_view line, std::size_t match, const TextServices& services) {
    std::size_t from = match > kLookBack ? match - kLookBack : 0;
    while (from < match && isContinuation(line[from])) ++from;
    const std::string_view before = line.substr(from, match - from);
    const std::size_t count = services.characterCount(before);
    if (count <= kCharactersBefore) return from;
    const std::size_t start = from + services.prefix(before, count - kCharactersBefore).size();
    const std::size_t blank = line.substr(start, match - start).find(' ');
    return blank == std::string_view::npos ? start : start + blank + 1;
}

std::string excerptAround(std::string_view line, std::size_t match, const TextServices& services) {
    const std::size_t start = excerptStart(line, match, services);
    const std::string_view shown = services.prefix(line.substr(start), kExcerptCharacters);
    std::string excerpt(trimmed(shown));
    std::ranges::replace(excerpt, '\t', ' ');
    if (start > 0) excerpt.insert(0, kEllipsis);
    if (start + shown.size() < line.size()) excerpt += kEllipsis;
    return excerpt;
}

}  // namespace

std::vector<PageHit> PageSearch::find(const Pages& pages, std::string_view query, std::size_t limit,
                                      const std::stop_token& stop) {
    const std::vector<std::string> words = searchWords(query, text_);
    if (!refresh(pages, stop) || words.empty()) return {};
    std::vector<Needle> needles;
    for (const std::string& word : words) needles.emplace_back(word, byteCounts_);

    std::vector<Match> matches;
    std::vector<const FoldedPage*> found;
    for (const FoldedPage* const page : candidates(words)) {
        if (stop.stop_requested()) return {};
        const std::optional<PageHit::Where> where = matchIn(*page, needles);
        if (!where) continue;
        matches.push_back({*where, page->lastEdited, page->source->id});
        found.push_back(page);
    }
    lastWords_ = words;
    lastFound_ = std::move(found);
    const auto kept = matches.begin() + static_cast<std::ptrdiff_t>(std::min(limit, matches.size()));
    std::ranges::partial_sort(matches, kept, [](const Match& a, const Match& b) {
        if (a.where != b.where) return a.where < b.where;
        return a.lastEdited == b.lastEdited ? a.page < b.page : b.lastEdited < a.lastEdited;
    });
    matches.erase(kept, matches.end());

    std::vector<PageHit> hits;
    for (const Match& match : matches) {
        hits.push_back({.page = match.page, .where = match.where, .excerpt = excerptOf(match.page, words)});
    }
    return hits;
}

std::vector<const PageSearch::FoldedPage*> PageSearch::candidates(const std::vector<std::string>& words) const {
    if (!lastWords_.empty() && narrows(lastWords_, words)) return lastFound_;
    std::vector<const FoldedPage*> all;
    all.reserve(pages_.size());
    for (const auto& [id, page] : pages_) all.push_back(&page);
    return all;
}

bool PageSearch::refresh(const Pages& pages, const std::stop_token& stop) {
    ++round_;
    for (const auto& page : pages) {
        if (stop.stop_requested()) return false;
        FoldedPage& folded = pages_[page->id];
        if (folded.round == round_) continue;  // a second page of this identity
        folded.round = round_;
        if (folded.source == page) continue;
        lastWords_.clear();
        fold(page, folded);
    }
    if (std::erase_if(pages_, [this](const auto& page) { return page.second.round != round_; }) > 0) lastWords_.clear();
    return true;
}

void PageSearch::fold(const Pages::value_type& page, FoldedPage& folded) {
    folded.source = page;
    folded.title = searchFolded(page->title, text_);
    folded.body = searchFolded(page->body, text_);
    folded.lastEdited = lastEdited(*page);
    folded.tags.clear();
    for (const std::string& tag : page->tags) folded.tags.push_back(searchFolded(tag, text_));
    sampleBytes(folded.body);
}

void PageSearch::sampleBytes(std::string_view text) {
    for (const char c : text.substr(0, kSampledBytes)) ++byteCounts_[static_cast<unsigned char>(c)];
}

std::string PageSearch::excerptOf(PageId id, const std::vector<std::string>& words) const {
    const FoldedPage& page = pages_.at(id);
    const std::string_view folded = page.body;
    const std::size_t match = firstMatch(folded, words);
    if (match == std::string_view::npos) return {};
    // Folding keeps the line ends. No word has one in it, so that a match lies within a line.
    const std::size_t lineStart = folded.substr(0, match).find_last_of("\r\n") + 1;
    const std::size_t lineNumber = splitLines(folded.substr(0, lineStart)).size();
    const std::string_view line = splitLines(page.source->body)[lineNumber];
    return excerptAround(line, originalOffset(line, match - lineStart, text_), text_);
}

}  // namespace tessary
