#include "library/markdown_scan.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "base/text.h"

namespace tessary {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr char kMasked = '\x01';

struct LineStart {
    std::string_view rest;
    bool isQuoted = false;
    bool isItem = false;
};

/// Steps over quote signs and list markers.
LineStart lineStart(std::string_view line) {
    LineStart start{.rest = line};
    for (;;) {
        start.rest = trimmed(start.rest);
        const std::size_t marker = listMarker(start.rest);
        if (marker == 0 && !start.rest.starts_with('>')) return start;
        start.isItem = start.isItem || marker > 0;
        start.isQuoted = start.isQuoted || marker == 0;
        start.rest.remove_prefix(std::max<std::size_t>(marker, 1));
    }
}

std::string_view withoutQuoteSigns(std::string_view line) {
    line = trimmed(line);
    while (line.starts_with('>')) line = trimmed(line.substr(1));
    return line;
}

struct TickRun {
    std::size_t begin;
    std::size_t length;
    bool isEscaped;  ///< its first backtick opens nothing, though it may still close
    std::size_t closer = kNone;
};

std::vector<TickRun> tickRuns(std::string_view text) {
    std::vector<TickRun> runs;
    for (std::size_t begin = text.find('`'); begin != kNone; begin = text.find('`', begin)) {
        std::size_t backslashes = 0;
        while (backslashes < begin && text[begin - backslashes - 1] == '\\') ++backslashes;
        const std::size_t end = skip(text, begin, "`");
        runs.push_back({.begin = begin, .length = end - begin, .isEscaped = backslashes % 2 == 1});
        begin = end;
    }
    std::unordered_map<std::size_t, std::size_t> nextOfLength;
    for (std::size_t i = runs.size(); i-- > 0;) {
        const auto next = nextOfLength.find(runs[i].length - (runs[i].isEscaped ? 1 : 0));
        if (next != nextOfLength.end()) runs[i].closer = next->second;
        nextOfLength[runs[i].length] = i;
    }
    return runs;
}

class CodeMask {
public:
    explicit CodeMask(std::string_view text) : text_(text), masked_(text) {}

    std::string result() && {
        FenceTracker fence;
        for (const std::string_view line : splitLines(text_)) {
            const std::size_t begin = placeIn(text_, line);
            const std::size_t end = begin + line.size();
            const bool isCode = fence.isCode(line);
            const LineStart start = lineStart(line);
            const bool standsAlone = isCode || start.rest.empty() || start.rest.starts_with('#');
            if (standsAlone || start.isItem) finishParagraph(begin);
            if (isCode) {
                blot(begin, end);
                paragraph_ = end;
            } else if (standsAlone) {
                finishParagraph(end);
            }
        }
        finishParagraph(text_.size());
        return std::move(masked_);
    }

private:
    void finishParagraph(std::size_t end) {
        for (const CodeSpan& span : codeSpans(text_.substr(paragraph_, end - paragraph_))) {
            blot(paragraph_ + span.begin, paragraph_ + span.end);
        }
        paragraph_ = end;
    }

    void blot(std::size_t begin, std::size_t end) {
        for (; begin < end; ++begin) {
            if (masked_[begin] != '\n') masked_[begin] = kMasked;
        }
    }

    std::string_view text_;
    std::string masked_;
    std::size_t paragraph_ = 0;  // where it begins
};

}  // namespace

bool isBlank(char c) { return kBlanks.contains(c); }

bool isPunctuation(char c) {
    return (c >= '!' && c <= '/') || (c >= ':' && c <= '@') || (c >= '[' && c <= '`') || (c >= '{' && c <= '~');
}

char charAt(std::string_view text, std::size_t index) { return index < text.size() ? text[index] : '\0'; }

std::size_t skip(std::string_view text, std::size_t from, std::string_view characters) {
    return std::min(text.size(), text.find_first_not_of(characters, from));
}

std::size_t placeIn(std::string_view whole, std::string_view part) {
    return static_cast<std::size_t>(part.data() - whole.data());
}

std::string_view withoutOuterBlankLines(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == kNone) return {};
    const std::size_t lineEnd = text.substr(0, first).rfind('\n');
    text.remove_prefix(lineEnd == kNone ? 0 : lineEnd + 1);
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::size_t listMarker(std::string_view line) {
    if (line.size() > 1 && std::string_view("-*+").contains(line.front()) && line[1] == ' ') return 2;
    const std::size_t digits = skip(line, 0, "0123456789");
    if (digits == 0 || digits > 9 || (charAt(line, digits) != '.' && charAt(line, digits) != ')')) return 0;
    return charAt(line, digits + 1) == ' ' ? digits + 2 : 0;
}

bool FenceTracker::isCode(std::string_view line) {
    if (isQuoted_ && !trimmed(line).starts_with('>')) length_ = 0;
    if (length_ == 0) return opens(line);
    const std::string_view rest = isQuoted_ ? withoutQuoteSigns(line) : trimmed(line);
    const std::size_t run = skip(rest, 0, std::string_view(&mark_, 1));
    if (run >= length_ && run == rest.size()) length_ = 0;
    return true;
}

bool FenceTracker::opens(std::string_view line) {
    const LineStart start = lineStart(line);
    if (!start.rest.starts_with("```") && !start.rest.starts_with("~~~")) return false;
    mark_ = start.rest.front();
    const std::size_t run = skip(start.rest, 0, std::string_view(&mark_, 1));
    if (mark_ == '`' && start.rest.substr(run).contains('`')) return false;
    length_ = run;
    isQuoted_ = start.isQuoted;
    return true;
}

std::vector<CodeSpan> codeSpans(std::string_view paragraph) {
    std::vector<CodeSpan> spans;
    const std::vector<TickRun> runs = tickRuns(paragraph);
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (runs[i].closer == kNone) continue;
        const TickRun& closer = runs[runs[i].closer];
        const std::size_t begin = runs[i].begin + (runs[i].isEscaped ? 1 : 0);
        spans.push_back({.begin = begin, .end = closer.begin + closer.length, .ticks = closer.length});
        i = runs[i].closer;
    }
    return spans;
}

std::string codeMasked(std::string_view text) { return CodeMask(text).result(); }

}  // namespace tessary
