#include "ai/source_chunks.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/text.h"

namespace tessary {
namespace {

constexpr std::string_view kMarkerStart = "[Page ";
constexpr std::size_t kLongestNumber = 9;  ///< digits

/// A "[Page N]" marker.
struct Marker {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::int64_t page = 0;
};

std::optional<Marker> markerAt(std::string_view text, std::size_t begin) {
    const std::size_t digits = begin + kMarkerStart.size();
    const std::size_t close = text.find(']', digits);
    if (close == std::string_view::npos || close == digits || close - digits > kLongestNumber) return std::nullopt;
    const auto page = parseNumber<std::int64_t>(text.substr(digits, close - digits));
    if (!page || *page < 1) return std::nullopt;
    return Marker{.begin = begin, .end = close + 1, .page = *page};
}

std::vector<Marker> markersIn(std::string_view text) {
    std::vector<Marker> markers;
    for (std::size_t at = text.find(kMarkerStart); at != std::string_view::npos; at = text.find(kMarkerStart, at + 1)) {
        if (const std::optional<Marker> marker = markerAt(text, at)) markers.push_back(*marker);
    }
    return markers;
}

bool isSpace(char byte) { return byte == ' ' || byte == '\n'; }

/// What ends a sentence, with quotes and brackets after it.
bool endsSentence(std::string_view text) {
    constexpr std::string_view kClosing[] = {"\"", "'", ")", "]", "”", "’", "»"};
    constexpr std::string_view kEnds[] = {".", "!", "?", "…"};
    const auto endsWith = [&](std::string_view end) { return text.ends_with(end); };
    while (true) {
        const auto* const closing = std::ranges::find_if(kClosing, endsWith);
        if (closing == std::end(kClosing)) break;
        text.remove_suffix(closing->size());
    }
    return std::ranges::any_of(kEnds, endsWith);
}

/// Writing without spaces ends its sentences with these.
bool endsWideSentence(std::string_view text) {
    return text.ends_with("。") || text.ends_with("！") || text.ends_with("？");
}

/// Looks for places to cut in the second half of a text that is longer than fits.
class CutFinder {
public:
    /// `window` is what fits; `behind` is the byte after it.
    CutFinder(std::string_view window, char behind) : window_(window), behind_(behind), markers_(markersIn(window)) {}

    [[nodiscard]] std::size_t find() const {
        const auto paragraph = last(
            [&](std::size_t at) { return at + 1 < window_.size() && window_[at] == '\n' && window_[at + 1] == '\n'; });
        if (paragraph) return *paragraph;
        const auto sentence = last([&](std::size_t at) {
            const std::string_view before = window_.substr(0, at);
            return (isSpace(at < window_.size() ? window_[at] : behind_) && endsSentence(before)) ||
                   endsWideSentence(before);
        });
        if (sentence) return *sentence;
        const auto word = last([&](std::size_t at) { return isSpace(at < window_.size() ? window_[at] : behind_); });
        return word.value_or(window_.size());
    }

private:
    template <class Fits>
    std::optional<std::size_t> last(Fits fits) const {
        for (std::size_t at = window_.size(); at > window_.size() / 2; --at) {
            if (fits(at) && !touchesMarker(at)) return at;
        }
        return std::nullopt;
    }

    /// A marker is neither cut nor left at the end, without its text.
    [[nodiscard]] bool touchesMarker(std::size_t at) const {
        if (window_.substr(0, at).ends_with(trimmed(kMarkerStart))) return true;
        return std::ranges::any_of(markers_, [at](const Marker& m) { return at > m.begin && at <= m.end; });
    }

    std::string_view window_;
    char behind_;
    std::vector<Marker> markers_;
};

std::string_view withoutLeadingSpaces(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \n"), text.size()));
    return text;
}

}  // namespace

std::vector<SourceChunk> chunked(std::string_view cleaned, std::size_t limit, const TextServices& services) {
    std::vector<SourceChunk> chunks;
    std::string_view rest = cleaned;
    std::optional<std::int64_t> page;  // of the text that comes next
    while (!rest.empty()) {
        SourceChunk chunk;
        if (page && !(rest.starts_with(kMarkerStart) && markerAt(rest, 0))) {
            chunk.text = "[Page " + std::to_string(*page) + "] ";
        }
        const std::size_t room = limit > chunk.text.size() ? limit - chunk.text.size() : std::size_t{1};
        std::string_view piece = services.prefix(rest, room);
        if (piece.size() < rest.size()) piece = piece.substr(0, CutFinder(piece, rest[piece.size()]).find());
        rest = withoutLeadingSpaces(rest.substr(piece.size()));
        chunk.text += trimmed(piece);
        for (const Marker& marker : markersIn(chunk.text)) {
            chunk.pages.insert(marker.page);
            page = marker.page;
        }
        chunks.push_back(std::move(chunk));
    }
    return chunks;
}

std::vector<std::int64_t> sharedCounts(const std::vector<SourceChunk>& chunks, std::int64_t count) {
    double total = 0;
    for (const SourceChunk& chunk : chunks) total += static_cast<double>(chunk.text.size());
    std::vector<std::int64_t> shares;
    double length = 0;
    std::int64_t given = 0;
    for (const SourceChunk& chunk : chunks) {
        length += static_cast<double>(chunk.text.size());
        const auto due = static_cast<std::int64_t>(std::round(static_cast<double>(count) * length / total));
        shares.push_back(due - given);
        given = due;
    }
    return shares;
}

}  // namespace tessary
