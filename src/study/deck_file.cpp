#include "study/deck_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

#include "base/text.h"

namespace tessary {

namespace {

constexpr auto kNone = std::string_view::npos;
constexpr std::string_view kHeader = "#separator:tab\n#html:true\n#columns:Front\tBack\tKind\n";
constexpr std::string_view kBreakTag = "<br>";
constexpr std::size_t kLongestEntity = 12;

bool isAsciiDigit(char c) { return c >= '0' && c <= '9'; }
bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isLineBreak(char c) { return c == '\n' || c == '\r'; }

std::string withPlainLineBreaks(std::string_view text) {
    return replacedAll(replacedAll(text, "\r\n", "\n"), "\r", "\n");
}

std::optional<FlashcardKind> kindNamed(std::string_view wanted) {
    for (const auto& [value, name] : EnumNames<FlashcardKind>::names) {
        if (equalsIgnoringAsciiCase(name, wanted)) return value;
    }
    return std::nullopt;
}

// ---- Entities and tags ----

struct Entity {
    char32_t codePoint;
    std::size_t length;  // with '&' and ';'
};

constexpr auto kNamedEntities = std::to_array<std::pair<std::string_view, char32_t>>({
    {"amp", U'&'},       {"lt", U'<'},        {"gt", U'>'},        {"quot", U'"'},      {"apos", U'\''},
    {"nbsp", U'\u00A0'}, {"ndash", U'\u2013'}, {"mdash", U'\u2014'}, {"hellip", U'\u2026'}, {"lsquo", U'\u2018'},
    {"rsquo", U'\u2019'}, {"ldquo", U'\u201C'}, {"rdquo", U'\u201D'}, {"bdquo", U'\u201E'}, {"laquo", U'\u00AB'},
    {"raquo", U'\u00BB'}, {"auml", U'\u00E4'}, {"ouml", U'\u00F6'}, {"uuml", U'\u00FC'}, {"Auml", U'\u00C4'},
    {"Ouml", U'\u00D6'}, {"Uuml", U'\u00DC'}, {"szlig", U'\u00DF'}, {"eacute", U'\u00E9'}, {"egrave", U'\u00E8'},
    {"agrave", U'\u00E0'}, {"ccedil", U'\u00E7'}, {"ntilde", U'\u00F1'}, {"deg", U'\u00B0'}, {"middot", U'\u00B7'},
    {"times", U'\u00D7'}, {"divide", U'\u00F7'}, {"plusmn", U'\u00B1'}, {"micro", U'\u00B5'}, {"euro", U'\u20AC'},
    {"pound", U'\u00A3'}, {"copy", U'\u00A9'}, {"reg", U'\u00AE'}, {"trade", U'\u2122'}, {"sect", U'\u00A7'},
    {"bull", U'\u2022'}, {"rarr", U'\u2192'}, {"larr", U'\u2190'}, {"rArr", U'\u21D2'}, {"hArr", U'\u21D4'},
    {"le", U'\u2264'},   {"ge", U'\u2265'},   {"ne", U'\u2260'},   {"asymp", U'\u2248'}, {"infin", U'\u221E'},
});

std::optional<char32_t> numericEntity(std::string_view digits) {
    const bool hexadecimal = digits.starts_with('x') || digits.starts_with('X');
    if (hexadecimal) digits.remove_prefix(1);
    std::uint32_t value = 0;
    const auto* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, hexadecimal ? 16 : 10);
    if (digits.empty() || stop != end || error == std::errc::invalid_argument) return std::nullopt;
    if (error != std::errc() || value == 0) return U'\uFFFD';
    return static_cast<char32_t>(value);
}

std::optional<char32_t> entityNamed(std::string_view name) {
    if (name.starts_with('#')) return numericEntity(name.substr(1));
    const auto* const found = std::ranges::find(kNamedEntities, name, &std::pair<std::string_view, char32_t>::first);
    if (found == kNamedEntities.end()) return std::nullopt;
    return found->second;
}

/// The entity `text` begins with.
std::optional<Entity> leadingEntity(std::string_view text) {
    const auto end = text.substr(0, kLongestEntity).find(';');
    if (!text.starts_with('&') || end == kNone) return std::nullopt;
    const auto codePoint = entityNamed(text.substr(1, end - 1));
    if (!codePoint) return std::nullopt;
    return Entity{.codePoint = *codePoint, .length = end + 1};
}

bool beginsTag(std::string_view text) {
    return text.size() > 1 && text[0] == '<' && (isAsciiLetter(text[1]) || text[1] == '/' || text[1] == '!');
}

std::string decodedEntities(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        if (const auto entity = leadingEntity(text)) {
            appendUtf8(result, entity->codePoint);
            text.remove_prefix(entity->length);
        } else {
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return withPlainLineBreaks(result);
}

/// The lower-case name of a tag, with the slash of a closing one: `tag` is what stands between the angle brackets.
std::string tagName(std::string_view tag) {
    std::size_t length = tag.starts_with('/') ? 1 : 0;
    while (length < tag.size() && (isAsciiLetter(tag[length]) || isAsciiDigit(tag[length]))) ++length;
    return asciiLowered(tag.substr(0, length));
}

/// Line breaks for the tags that make them, nothing for other tags; entities stay. A block's end breaks the line only
/// when more follows.
class TagRemover {
public:
    explicit TagRemover(std::string_view text) : rest_(text) {}

    std::string result() {
        while (!rest_.empty()) {
            if (!beginsTag(rest_) || !takeTag()) takeCharacter();
        }
        return std::move(result_);
    }

private:
    bool takeTag() {
        if (noMoreTagEnds_) return false;
        const auto end = rest_.find('>');
        noMoreTagEnds_ = end == kNone;
        if (noMoreTagEnds_) return false;
        const auto name = tagName(rest_.substr(1, end - 1));
        rest_.remove_prefix(end + 1);
        if (name == "br") emit('\n');
        if (name == "/p" || name == "/div") breakPending_ = true;
        return true;
    }

    void takeCharacter() {
        emit(rest_.front());
        rest_.remove_prefix(1);
    }

    void emit(char c) {
        if (breakPending_) result_ += '\n';
        breakPending_ = false;
        result_ += c;
    }

    std::string_view rest_;
    std::string result_;
    bool breakPending_ = false;
    bool noMoreTagEnds_ = false;
};

// ---- Numbered options ----

/// The length of the "12. " a line begins with; 0 without one.
std::size_t numberingLength(std::string_view line) {
    std::size_t digits = 0;
    while (digits < line.size() && isAsciiDigit(line[digits])) ++digits;
    return digits > 0 && line.substr(digits).starts_with(". ") ? digits + 2 : 0;
}

bool isNumbered(std::string_view line, std::size_t number) { return line.starts_with(fmt::format("{}. ", number)); }

struct Choices {
    std::string question;
    std::vector<std::string> options;
};

std::string joinedLines(const std::vector<std::string_view>& lines, std::size_t begin, std::size_t end) {
    std::string result;
    for (auto i = begin; i < end; ++i) {
        if (i > begin) result += '\n';
        result += lines[i];
    }
    return result;
}

std::optional<std::size_t> firstOptionLine(const std::vector<std::string_view>& lines) {
    for (auto i = lines.size(); i-- > 1;) {
        if (isNumbered(lines[i], 1) && trimmed(lines[i - 1]).empty()) return i;
    }
    return std::nullopt;
}

/// Entities must still be undecoded: they keep a line of the question or of an option from reading as numbered.
Choices splitChoices(std::string_view text) {
    const auto lines = split(text, '\n');
    const auto first = firstOptionLine(lines);
    if (!first) return Choices{.question = std::string(text), .options = {}};
    Choices choices{.question = joinedLines(lines, 0, *first - 1), .options = {}};
    for (auto i = *first; i < lines.size(); ++i) {
        if (isNumbered(lines[i], choices.options.size() + 1)) {
            choices.options.emplace_back(lines[i].substr(numberingLength(lines[i])));
        } else {
            choices.options.back() += '\n';
            choices.options.back() += lines[i];
        }
    }
    return choices;
}

/// The option that a back names: the same text, or else the same but for white space at its ends.
std::optional<std::size_t> optionEqualTo(const std::vector<std::string>& options, std::string_view back) {
    auto found = std::ranges::find(options, back);
    if (found == options.end()) {
        found = std::ranges::find(options, trimmed(back), [](const std::string& option) { return trimmed(option); });
    }
    if (found == options.end()) return std::nullopt;
    return static_cast<std::size_t>(found - options.begin());
}

// ---- Writing ----

std::string_view escapeAt(std::string_view text) {
    if (text.front() == '\t') return "&#9;";
    if (text.front() == '\n') return kBreakTag;
    if (leadingEntity(text)) return "&amp;";
    if (beginsTag(text)) return "&lt;";
    return {};
}

std::string escaped(std::string_view text) {
    const auto plain = withPlainLineBreaks(text);
    std::string result;
    for (std::string_view rest = plain; !rest.empty(); rest.remove_prefix(1)) {
        const auto escape = escapeAt(rest);
        if (escape.empty()) {
            result += rest.front();
        } else {
            result += escape;
        }
    }
    return result;
}

std::string escapedUnnumbered(std::string_view text) {
    const auto plain = withPlainLineBreaks(text);
    std::string result;
    for (const auto line : split(plain, '\n')) {
        if (line.data() != plain.data()) result += kBreakTag;
        const auto numbering = numberingLength(line);
        if (numbering > 0) {
            result += line.substr(0, numbering - 2);
            result += "&#46;";
        }
        result += escaped(numbering > 0 ? line.substr(numbering - 1) : line);
    }
    return result;
}

std::string withLeadingEscaped(std::string field, char leading, std::string_view escape) {
    if (field.starts_with(leading)) field.replace(0, 1, escape);
    return field;
}

std::string frontField(const CardContent& card) {
    if (card.kind != FlashcardKind::multipleChoice) return escaped(card.front);
    auto field = escapedUnnumbered(card.front) + "<br>";
    for (std::size_t i = 0; i < card.options.size(); ++i) {
        field += fmt::format("<br>{}. {}", i + 1, escapedUnnumbered(card.options[i]));
    }
    return field;
}

/// The back of a multiple choice is what tells its right option in the file. A back that would lead to another one, or
/// to none, gives way to the right option's text.
std::string_view backOf(const CardContent& card) {
    if (card.kind != FlashcardKind::multipleChoice || contentProblem(card)) return card.back;
    const auto& right = card.options[static_cast<std::size_t>(*card.correctIndex)];
    const auto found = optionEqualTo(card.options, card.back);
    return found && card.options[*found] == right ? card.back : right;
}

std::string exportedLine(const CardContent& card) {
    auto front = withLeadingEscaped(frontField(card), '"', "&quot;");
    front = withLeadingEscaped(std::move(front), '#', "&#35;");
    const auto back = withLeadingEscaped(escaped(backOf(card)), '"', "&quot;");
    return fmt::format("{}\t{}\t{}\n", front, back, enumName(card.kind));
}

// ---- Records ----

std::string_view lineAt(std::string_view text) {
    return text.substr(0, std::min(text.size(), text.find_first_of("\r\n")));
}

class RecordReader {
public:
    explicit RecordReader(std::string_view text) : text_(text) {}

    [[nodiscard]] bool atEnd() const { return position_ >= text_.size(); }
    [[nodiscard]] std::size_t line() const { return line_; }
    [[nodiscard]] std::string_view peekLine() const { return lineAt(text_.substr(position_)); }

    void skipLine() {
        position_ += peekLine().size();
        takeLineEnd();
    }

    std::vector<std::string> record(char separator) {
        std::vector<std::string> fields;
        while (true) {
            fields.push_back(field(separator));
            if (atEnd() || text_[position_] != separator) break;
            ++position_;
        }
        takeLineEnd();
        return fields;
    }

private:
    std::string field(char separator) {
        if (auto quoted = quotedField(separator)) return std::move(*quoted);
        const auto rest = peekLine();
        const auto length = std::min(rest.size(), rest.find(separator));
        position_ += length;
        return std::string(rest.substr(0, length));
    }

    std::optional<std::string> quotedField(char separator) {
        if (atEnd() || text_[position_] != '"') return std::nullopt;
        std::string content;
        auto from = position_ + 1;
        while (true) {
            const auto quote = text_.find('"', from);
            if (quote == kNone) return std::nullopt;
            content += text_.substr(from, quote - from);
            from = quote + 1;
            if (from >= text_.size() || text_[from] != '"') break;
            content += '"';
            ++from;
        }
        if (from < text_.size() && text_[from] != separator && !isLineBreak(text_[from])) return std::nullopt;
        line_ += lineBreaks(text_.substr(position_, from - position_));
        position_ = from;
        return content;
    }

    static std::size_t lineBreaks(std::string_view text) {
        return static_cast<std::size_t>(std::ranges::count(withPlainLineBreaks(text), '\n'));
    }

    void takeLineEnd() {
        if (atEnd()) return;
        position_ += text_.substr(position_).starts_with("\r\n") ? 2 : 1;
        ++line_;
    }

    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t line_ = 1;
};

// ---- Headers ----

struct Headers {
    std::optional<char> separator;
    bool html = false;
    std::optional<std::string_view> columns;
    std::vector<std::size_t> leftOut;  // column indices
};

std::optional<char> separatorNamed(std::string_view value) {
    constexpr auto kSeparators = std::to_array<std::pair<std::string_view, char>>(
        {{"tab", '\t'}, {"comma", ','}, {"semicolon", ';'}, {"pipe", '|'}});
    const auto name = trimmed(value);
    for (const auto& [known, separator] : kSeparators) {
        if (equalsIgnoringAsciiCase(known, name)) return separator;
        if (value.starts_with(separator) || name == std::string_view(&separator, 1)) return separator;
    }
    return std::nullopt;
}

std::optional<std::size_t> columnIndex(std::string_view value) {
    const auto digits = trimmed(value);
    std::size_t number = 0;
    const auto* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || stop != end || number == 0) return std::nullopt;
    return number - 1;
}

constexpr std::array<std::string_view, 4> kSpecialColumns = {"tags", "deck", "notetype", "guid"};

bool isSpecialColumn(std::string_view name) {
    return std::ranges::any_of(kSpecialColumns,
                               [name](std::string_view known) { return equalsIgnoringAsciiCase(known, name); });
}

bool isSpecialColumnHeader(std::string_view key) {
    constexpr std::string_view kSuffix = " column";
    return key.ends_with(kSuffix) && isSpecialColumn(key.substr(0, key.size() - kSuffix.size()));
}

void readHeader(Headers& headers, std::string_view line) {
    const auto colon = line.find(':');
    if (colon == kNone) return;
    const auto key = asciiLowered(trimmed(line.substr(1, colon - 1)));
    const auto value = line.substr(colon + 1);
    if (key == "separator") headers.separator = separatorNamed(value);
    if (key == "html") headers.html = equalsIgnoringAsciiCase(trimmed(value), "true");
    if (key == "columns") headers.columns = value;
    if (!isSpecialColumnHeader(key)) return;
    if (const auto index = columnIndex(value)) headers.leftOut.push_back(*index);
}

char guessedSeparator(std::string_view line) {
    for (const char separator : {'\t', ';', ',', '|'}) {
        if (line.contains(separator)) return separator;
    }
    return '\t';
}

struct Layout {
    char separator = '\t';
    bool html = false;
    std::size_t front = 0;
    std::size_t back = 0;
    std::optional<std::size_t> kind;
};

std::optional<std::size_t> columnNamed(const std::vector<std::string>& names, std::string_view wanted) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (equalsIgnoringAsciiCase(trimmed(names[i]), wanted)) return i;
    }
    return std::nullopt;
}

std::size_t firstFree(std::vector<std::size_t>& taken) {
    std::size_t index = 0;
    while (std::ranges::find(taken, index) != taken.end()) ++index;
    taken.push_back(index);
    return index;
}

Layout layoutFor(const Headers& headers, std::string_view firstLine) {
    Layout layout;
    layout.separator = headers.separator ? *headers.separator : guessedSeparator(firstLine);
    layout.html = headers.html;
    std::vector<std::string> names;
    if (headers.columns) names = RecordReader(*headers.columns).record(layout.separator);
    auto taken = headers.leftOut;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (isSpecialColumn(trimmed(names[i]))) taken.push_back(i);
    }
    const auto front = columnNamed(names, "front");
    const auto back = columnNamed(names, "back");
    layout.kind = columnNamed(names, "kind");
    for (const auto& named : {front, back, layout.kind}) {
        if (named) taken.push_back(*named);
    }
    layout.front = front ? *front : firstFree(taken);
    layout.back = back ? *back : firstFree(taken);
    return layout;
}

// ---- Cards ----

struct NumberedBlank {
    std::size_t begin;
    std::size_t end;
    std::string_view term;
};

/// Past the "{{c12::" at `begin`; nothing when something else stands there.
std::optional<std::size_t> numberedTermBegin(std::string_view text, std::size_t begin) {
    auto position = begin + 3;
    while (position < text.size() && isAsciiDigit(text[position])) ++position;
    if (position == begin + 3 || !text.substr(position).starts_with("::")) return std::nullopt;
    return position + 2;
}

std::optional<NumberedBlank> nextNumberedBlank(std::string_view text, std::size_t from) {
    for (auto begin = text.find("{{c", from); begin != kNone; begin = text.find("{{c", begin + 1)) {
        const auto termBegin = numberedTermBegin(text, begin);
        if (!termBegin) continue;
        const auto end = text.find("}}", *termBegin);
        if (end == kNone) return std::nullopt;
        const auto content = text.substr(*termBegin, end - *termBegin);
        return NumberedBlank{.begin = begin, .end = end + 2, .term = content.substr(0, content.find("::"))};
    }
    return std::nullopt;
}

std::string withPlainBlanks(std::string_view text) {
    std::string result;
    std::size_t from = 0;
    while (const auto blank = nextNumberedBlank(text, from)) {
        result += text.substr(from, blank->begin - from);
        result += fmt::format("{{{{{}}}}}", blank->term);
        from = blank->end;
    }
    result += text.substr(from);
    return result;
}

class CardReader {
public:
    CardReader(const Layout& layout, const std::vector<std::string>& fields) : layout_(layout), fields_(fields) {}

    std::expected<CardContent, std::string> card() const {
        if (layout_.back >= fields_.size()) return std::unexpected("There is no second field.");
        const auto name = trimmed(kindName());
        const auto kind = kindNamed(name);
        if (!name.empty() && !kind) return std::unexpected(fmt::format("“{}” is no kind of card.", name));
        auto content = kind ? cardOfKind(*kind) : cardOfUnnamedKind();
        if (auto problem = contentProblem(content)) return std::unexpected(std::move(*problem));
        return content;
    }

private:
    [[nodiscard]] std::string_view field(std::size_t index) const {
        return index < fields_.size() ? std::string_view(fields_[index]) : std::string_view();
    }

    [[nodiscard]] std::string_view kindName() const { return layout_.kind ? field(*layout_.kind) : std::string_view(); }

    [[nodiscard]] std::string withoutTags(std::string_view text) const {
        const auto plain = withPlainLineBreaks(text);
        return layout_.html ? TagRemover(plain).result() : plain;
    }

    [[nodiscard]] std::string decoded(std::string text) const { return layout_.html ? decodedEntities(text) : text; }

    [[nodiscard]] CardContent cardOfKind(FlashcardKind kind) const {
        CardContent content;
        content.kind = kind;
        content.back = decoded(withoutTags(field(layout_.back)));
        auto front = withoutTags(field(layout_.front));
        if (kind == FlashcardKind::multipleChoice) {
            setChoices(content, front);
        } else {
            content.front = decoded(std::move(front));
        }
        return content;
    }

    [[nodiscard]] CardContent cardOfUnnamedKind() const {
        auto content = cardOfKind(FlashcardKind::basic);
        if (!nextNumberedBlank(content.front, 0)) return content;
        content.kind = FlashcardKind::cloze;
        content.front = withPlainBlanks(content.front);
        if (trimmed(content.back).empty()) content.back = joined(clozeTerms(content.front), kClozeTermSeparator);
        return content;
    }

    void setChoices(CardContent& content, std::string_view front) const {
        auto choices = splitChoices(front);
        content.front = decoded(std::move(choices.question));
        for (auto& option : choices.options) content.options.push_back(decoded(std::move(option)));
        if (const auto right = optionEqualTo(content.options, content.back)) {
            content.correctIndex = static_cast<std::int64_t>(*right);
        }
    }

    const Layout& layout_;
    const std::vector<std::string>& fields_;
};

bool isHeaderLine(std::string_view line) { return line.starts_with('#'); }
bool isSkipped(std::string_view line) { return isHeaderLine(line) || trimmed(line).empty(); }

Layout readLayout(RecordReader& reader) {
    Headers headers;
    for (; !reader.atEnd() && isSkipped(reader.peekLine()); reader.skipLine()) {
        if (isHeaderLine(reader.peekLine())) readHeader(headers, reader.peekLine());
    }
    return layoutFor(headers, reader.peekLine());
}

void readRecord(DeckImport& import, RecordReader& reader, const Layout& layout) {
    const auto line = reader.line();
    const auto fields = reader.record(layout.separator);
    auto card = CardReader(layout, fields).card();
    if (card) {
        import.cards.push_back(std::move(*card));
    } else {
        import.problems.push_back(DeckProblem{.line = line, .text = std::move(card.error())});
    }
}

}  // namespace

std::string exportDeck(const std::vector<CardContent>& cards) {
    std::string file(kHeader);
    for (const auto& card : cards) file += exportedLine(card);
    return file;
}

std::expected<DeckImport, std::string> parseDeck(std::string_view file) {
    if (!isValidUtf8(file)) return std::unexpected("Couldn't read that file.");
    RecordReader reader(withoutByteOrderMark(file));
    const auto layout = readLayout(reader);
    DeckImport import;
    while (!reader.atEnd()) {
        if (isSkipped(reader.peekLine())) {
            reader.skipLine();
        } else {
            readRecord(import, reader, layout);
        }
    }
    if (import.cards.empty()) return std::unexpected("No cards found in that file.");
    return import;
}

}  // namespace tessary
