#include "library/image_references.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "base/text.h"
#include "library/markdown_link.h"
#include "library/markdown_scan.h"

namespace tessary {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::size_t kLongestLabel = 999;  // bytes; longer ones are no labels

std::string withoutEscapes(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && isPunctuation(charAt(text, i + 1))) ++i;
        result += text[i];
    }
    return result;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const int letter = (c | 0x20) - 'a';
    return letter >= 0 && letter < 6 ? letter + 10 : -1;
}

/// As it is when what it stands for is no text that a file name can hold.
std::string percentDecoded(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' ? hexDigit(charAt(text, i + 1)) : -1;
        const int low = high >= 0 ? hexDigit(charAt(text, i + 2)) : -1;
        const bool isCode = low >= 0;
        result += isCode ? static_cast<char>(high * 16 + low) : text[i];
        if (isCode) i += 2;
    }
    const bool hasControls = std::ranges::any_of(result, [](char c) { return static_cast<unsigned char>(c) < ' '; });
    return hasControls || !isValidUtf8(result) ? text : result;
}

std::string percentEncoded(std::string_view text, std::string_view characters) {
    std::string result;
    for (const char c : text) {
        if (characters.contains(c)) {
            result += fmt::format("%{:02X}", static_cast<unsigned char>(c));
        } else {
            result += c;
        }
    }
    return result;
}

std::string normalizedLabel(std::string_view label) {
    std::string result;
    for (const char c : trimmed(label)) {
        if (!isBlank(c)) result += c;
        if (isBlank(c) && !result.ends_with(' ')) result += ' ';
    }
    return asciiLowered(result);
}

class ImageScanner {
public:
    explicit ImageScanner(std::string_view text) : text_(text), codeMasked_(codeMasked(text)) {}

    std::vector<ImageReference> result() && {
        findDefinitions();
        for (std::size_t i = 0; i < masked_.size();) i = step(i);
        std::ranges::sort(images_, {}, &ImageReference::begin);
        return std::move(images_);
    }

private:
    /// Looks at the sign at `i`; gives where to go on.
    std::size_t step(std::size_t i) {
        switch (masked_[i]) {
            case '\\': return isPunctuation(charAt(masked_, i + 1)) ? i + 2 : i + 1;
            case '\n':
                if (charAt(masked_, masked_.find_first_not_of(" \t", i + 1)) == '\n') brackets_.clear();
                return i + 1;
            case '!':
                if (charAt(masked_, i + 1) != '[') return i + 1;
                if (const std::size_t end = wikiImage(i); end != kNone) return end;
                brackets_.push_back({.begin = i + 1, .isImage = true});
                return i + 2;
            case '[': brackets_.push_back({.begin = i, .isImage = false}); return i + 1;
            case ']': return closeBracket(i);
            case '<': return htmlTag(i);
            default: return i + 1;
        }
    }

    std::size_t wikiImage(std::size_t i) {
        if (charAt(masked_, i + 2) != '[') return kNone;
        const std::size_t begin = i + 3;
        const std::size_t end = wikiEnd(begin);
        if (end == kNone) return kNone;
        const std::size_t nameEnd = std::min(end, masked_.substr(0, end).find_first_of("|#", begin));
        add(ImageForm::wiki, {begin, nameEnd}, std::string(trimmed(text_.substr(begin, nameEnd - begin))));
        return end + 2;
    }

    /// Where "]]" stands, on the same line and before another "[[".
    std::size_t wikiEnd(std::size_t i) const {
        for (i = masked_.find_first_of("[]\n", i); i != kNone; i = masked_.find_first_of("[]\n", i + 1)) {
            if (masked_[i] == '\n') return kNone;
            if (charAt(masked_, i + 1) == masked_[i]) return masked_[i] == ']' ? i : kNone;
        }
        return kNone;
    }

    std::size_t closeBracket(std::size_t i) {
        if (brackets_.empty()) return i + 1;
        const Bracket open = brackets_.back();
        brackets_.pop_back();
        if (!open.isImage) return i + 1;
        if (charAt(masked_, i + 1) == '(') {
            if (const std::optional<InlineTarget> found = inlineTargetAt(masked_, i + 1)) {
                add(ImageForm::markdown, found->target, markdownTarget(found->target));
                return found->end;
            }
        }
        return labelledImage(open.begin + 1, i);
    }

    /// "![alt][label]", "![label][]" or "![label]"; the first part stands between `begin` and `end`.
    std::size_t labelledImage(std::size_t begin, std::size_t end) {
        if (definitions_.empty()) return end + 1;
        std::size_t after = end + 1;
        TextSpan label{begin, end};
        if (charAt(masked_, after) == '[') {
            const std::size_t labelEnd = masked_.find_first_of("[]", after + 1);
            if (charAt(masked_, labelEnd) != ']') return after;
            if (labelEnd > after + 1) label = {after + 1, labelEnd};
            after = labelEnd + 1;
        }
        if (label.end - label.begin > kLongestLabel) return end + 1;
        const auto found = definitions_.find(normalizedLabel(text_.substr(label.begin, label.end - label.begin)));
        if (found == definitions_.end()) return end + 1;
        if (!found->second.isUsed) add(ImageForm::markdown, found->second.target, markdownTarget(found->second.target));
        found->second.isUsed = true;
        return after;
    }

    /// `i` is the place of "<".
    std::size_t htmlTag(std::size_t i) {
        const std::size_t nameEnd = i + 4;
        if (nameEnd >= masked_.size() || !equalsIgnoringAsciiCase(masked_.substr(i + 1, 3), "img")) return i + 1;
        if (!isBlank(masked_[nameEnd]) && masked_[nameEnd] != '/') return i + 1;
        std::optional<TextSpan> source;
        std::size_t next = skip(masked_, nameEnd, " \t\n/");
        while (charAt(masked_, next) != '>') {
            const std::size_t attributeEnd = std::min(masked_.size(), masked_.find_first_of(" \t\n/=<>\"'", next));
            if (attributeEnd == next) return i + 1;
            const bool isSource = equalsIgnoringAsciiCase(masked_.substr(next, attributeEnd - next), "src");
            next = skip(masked_, attributeEnd, kBlanks);
            if (charAt(masked_, next) == '=') {
                const std::optional<TextSpan> value = attributeValue(skip(masked_, next + 1, kBlanks));
                if (!value) return i + 1;
                if (isSource && !source) source = value;
                next = value->end;
            }
            next = skip(masked_, next, " \t\n/");
        }
        if (source) add(ImageForm::html, *source, htmlTarget(*source));
        return next + 1;
    }

    /// With its quotes.
    std::optional<TextSpan> attributeValue(std::size_t begin) const {
        const char quote = charAt(masked_, begin);
        const bool isQuoted = quote == '"' || quote == '\'';
        std::size_t end = isQuoted ? masked_.find(quote, begin + 1) : masked_.find_first_of(" \t\n<>", begin);
        if (end == kNone || end == begin) return std::nullopt;
        return TextSpan{begin, isQuoted ? end + 1 : end};
    }

    void findDefinitions() {
        for (const std::string_view line : splitLines(masked_)) {
            const std::size_t open = skip(line, 0, " ");
            if (open > 3 || charAt(line, open) != '[' || charAt(line, open + 1) == '^') continue;
            const std::size_t close = line.find_first_of("[]", open + 1);
            if (charAt(line, close) != ']' || charAt(line, close + 1) != ':' || close - open > kLongestLabel) continue;
            const std::size_t begin = placeIn(masked_, line);
            const std::optional<TextSpan> target = linkTargetAt(line, skip(line, close + 2, kBlanks));
            if (!target) continue;
            definitions_.try_emplace(normalizedLabel(text_.substr(begin + open + 1, close - open - 1)),
                                     Definition{.target = {begin + target->begin, begin + target->end}});
        }
    }

    std::string markdownTarget(TextSpan span) const {
        std::string_view written = text_.substr(span.begin, span.end - span.begin);
        if (written.starts_with('<')) written = written.substr(1, written.size() - 2);
        return percentDecoded(withoutEscapes(written));
    }

    std::string htmlTarget(TextSpan span) const {
        std::string_view written = text_.substr(span.begin, span.end - span.begin);
        if (written.starts_with('"') || written.starts_with('\'')) written = written.substr(1, written.size() - 2);
        return percentDecoded(replacedAll(trimmed(written), "&amp;", "&"));
    }

    void add(ImageForm form, TextSpan span, std::string target) {
        images_.push_back({.form = form, .begin = span.begin, .end = span.end, .target = std::move(target)});
    }

    struct Bracket {
        std::size_t begin;
        bool isImage;
    };
    struct Definition {
        TextSpan target;
        bool isUsed = false;
    };

    std::string_view text_;
    std::string codeMasked_;
    std::string_view masked_ = codeMasked_;
    std::vector<Bracket> brackets_;
    std::unordered_map<std::string, Definition> definitions_;
    std::vector<ImageReference> images_;
};

std::string writtenTarget(ImageForm form, const std::string& name) {
    if (form == ImageForm::wiki) return name;
    if (form == ImageForm::html) return '"' + percentEncoded(name, "%\"&<>") + '"';
    const std::string encoded = percentEncoded(name, "%<>\\`");
    return encoded.find_first_of(" ()") == kNone ? encoded : '<' + encoded + '>';
}

}  // namespace

std::vector<ImageReference> imageReferences(std::string_view markdown) { return ImageScanner(markdown).result(); }

std::string withImageTargets(std::string_view markdown, const std::vector<ImageReference>& images,
                             const std::vector<std::optional<std::string>>& targets) {
    std::string result;
    std::size_t copied = 0;
    for (std::size_t i = 0; i < images.size(); ++i) {
        if (!targets[i]) continue;
        result += markdown.substr(copied, images[i].begin - copied);
        result += writtenTarget(images[i].form, *targets[i]);
        copied = images[i].end;
    }
    result += markdown.substr(copied);
    return result;
}

}  // namespace tessary
