#include "library/markdown_heading.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "base/function_ref.h"
#include "base/text.h"
#include "library/markdown_link.h"
#include "library/markdown_scan.h"

namespace tessary {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

/// Finds the marks of one line that a reader does not see.
class PlainText {
public:
    explicit PlainText(std::string_view text) : text_(text), isDropped_(text.size()) {}

    std::string result() && {
        const std::vector<CodeSpan> spans = codeSpans(text_);
        auto span = spans.begin();
        for (std::size_t i = 0; i < text_.size();) {
            while (span != spans.end() && span->begin < i) ++span;
            if (span != spans.end() && span->begin == i) {
                drop(span->begin, span->begin + span->ticks);
                drop(span->end - span->ticks, span->end);
                i = span->end;
            } else {
                i = step(i);
            }
        }
        std::string plain;
        for (std::size_t i = 0; i < text_.size(); ++i) {
            if (!isDropped_[i]) plain += text_[i];
        }
        return std::string(trimmed(plain));
    }

private:
    std::size_t step(std::size_t i) {
        const char c = text_[i];
        if (c == '\\' && isPunctuation(charAt(text_, i + 1))) {
            drop(i, i + 1);
            return i + 2;
        }
        if (c == '[') brackets_.push_back(i);
        if (c == ']' && !brackets_.empty()) return close(i);
        if (c == '*' || c == '_' || c == '~' || c == '=') return emphasis(i);
        return i + 1;
    }

    std::size_t close(std::size_t i) {
        const std::size_t open = brackets_.back();
        brackets_.pop_back();
        const bool isInnermost = open >= lastClosed_;
        lastClosed_ = i;
        if (isInnermost && open > 0 && text_[open - 1] == '[' && charAt(text_, i + 1) == ']') return closeWiki(open, i);
        std::size_t end = kNone;
        if (charAt(text_, i + 1) == '(') {
            if (const auto target = inlineTargetAt(text_, i + 1)) end = target->end;
        } else if (charAt(text_, i + 1) == '[') {
            const std::size_t labelEnd = text_.find_first_of("[]", i + 2);
            if (charAt(text_, labelEnd) == ']') end = labelEnd + 1;
        }
        if (end == kNone) return i + 1;
        drop(open > 0 && text_[open - 1] == '!' ? open - 1 : open, open + 1);
        drop(i, end);
        return end;
    }

    /// "[[Page|shown]]": shows what stands behind the bar.
    std::size_t closeWiki(std::size_t open, std::size_t i) {
        if (!brackets_.empty()) brackets_.pop_back();
        const std::size_t bar = text_.substr(0, i).find('|', open);
        drop(open - 1, bar == kNone ? open + 1 : bar + 1);
        drop(i, i + 2);
        return i + 2;
    }

    /// Drops a run of signs together with the run of the same length that opened it.
    std::size_t emphasis(std::size_t i) {
        const char sign = text_[i];
        const std::size_t end = skip(text_, i, std::string_view(&sign, 1));
        const char before = i == 0 ? ' ' : text_[i - 1];
        const char after = end == text_.size() ? ' ' : text_[end];
        if ((sign == '~' || sign == '=') && end - i != 2) return end;
        const auto isWord = [](char c) { return !isBlank(c) && !isPunctuation(c); };
        const bool isInWord = sign == '_' && isWord(before) && isWord(after);
        std::vector<std::size_t>& openers = openers_[{sign, end - i}];
        if (!isInWord && !isBlank(before) && !openers.empty()) {
            drop(openers.back(), openers.back() + (end - i));
            drop(i, end);
            openers.pop_back();
        } else if (!isInWord && !isBlank(after)) {
            openers.push_back(i);
        }
        return end;
    }

    void drop(std::size_t begin, std::size_t end) {
        for (; begin < end; ++begin) isDropped_[begin] = true;
    }

    std::string_view text_;
    std::vector<bool> isDropped_;
    std::vector<std::size_t> brackets_;
    std::size_t lastClosed_ = 0;
    std::map<std::pair<char, std::size_t>, std::vector<std::size_t>> openers_;
};

std::size_t indentation(std::string_view line) { return skip(line, 0, " "); }

/// What a line with "#" signs says; empty for any other line.
std::string atxHeading(std::string_view line) {
    const std::string_view text = trimmed(line);
    const std::size_t signs = skip(text, 0, "#");
    if (indentation(line) > 3 || signs == 0 || signs > 6 || !isBlank(charAt(text, signs))) return {};
    std::string_view content = trimmed(text.substr(signs));
    const std::size_t last = content.find_last_not_of('#');
    if (last == kNone) return {};
    if (isBlank(content[last])) content = content.substr(0, last);
    return PlainText(content).result();
}

bool isUnderline(std::string_view line) {
    const std::string_view text = trimmed(line);
    if (indentation(line) > 3 || text.empty()) return false;
    if (text.front() == '-' && text.size() < 2) return false;
    return (text.front() == '=' || text.front() == '-') && skip(text, 0, text.substr(0, 1)) == text.size();
}

/// A line that an underline makes a heading.
bool mayBeUnderlined(std::string_view line) {
    return indentation(line) <= 3 && !std::string_view("\t#>|<").contains(line.front()) &&
           listMarker(trimmed(line)) == 0;
}

}  // namespace

namespace {

/// Gives each heading to `take` until that returns false.
void eachHeading(std::string_view markdown, FunctionRef<bool(Heading)> take) {
    FenceTracker fence;
    std::string_view previous;  // the only line of its paragraph so far
    bool inParagraph = false;
    for (const std::string_view line : splitLines(markdown)) {
        const std::size_t begin = placeIn(markdown, line);
        const std::size_t end = std::min(begin + line.size() + 1, markdown.size());
        const bool isCode = fence.isCode(line);
        if (isCode || trimmed(line).empty()) {
            previous = {};
            inParagraph = isCode;
            continue;
        }
        if (std::string title = atxHeading(line); !title.empty()) {
            const int level = static_cast<int>(skip(trimmed(line), 0, "#"));
            if (!take({.title = std::move(title), .begin = begin, .end = end, .level = level})) return;
            previous = {};
            inParagraph = false;
            continue;
        }
        if (!previous.empty() && isUnderline(line)) {
            std::string title = PlainText(trimmed(previous)).result();
            if (!title.empty()) {
                const int level = trimmed(line).front() == '=' ? 1 : 2;
                const std::size_t first = placeIn(markdown, previous);
                if (!take({.title = std::move(title), .begin = first, .end = end, .level = level})) return;
                previous = {};
                inParagraph = false;
                continue;
            }
        }
        previous = inParagraph || !mayBeUnderlined(line) ? std::string_view() : line;
        inParagraph = true;
    }
}

}  // namespace

std::vector<Heading> allHeadings(std::string_view markdown) {
    std::vector<Heading> headings;
    eachHeading(markdown, [&](Heading heading) {
        headings.push_back(std::move(heading));
        return true;
    });
    return headings;
}

std::optional<Heading> firstHeading(std::string_view markdown) {
    std::optional<Heading> first;
    eachHeading(markdown, [&](Heading heading) {
        first = std::move(heading);
        return false;
    });
    return first;
}

}  // namespace tessary
