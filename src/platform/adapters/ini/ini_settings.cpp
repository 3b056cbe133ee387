#include "platform/adapters/ini/ini_settings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <utility>

#include "base/text.h"
#include "platform/adapters/ini/ini_escapes.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSection = "General";
constexpr std::string_view kNoValueMark = "@Invalid()";
constexpr std::string_view kBlanks = " \t";

/// What stands between `mark` and the closing parenthesis.
std::optional<std::string_view> marked(std::string_view stored, std::string_view mark) {
    if (!stored.starts_with(mark) || !stored.ends_with(')')) return std::nullopt;
    return stored.substr(mark.size(), stored.size() - mark.size() - 1);
}

template <class Number>
std::optional<Number> parsed(std::string_view text) {
    Number value{};
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc{} || result.ptr != end) return std::nullopt;
    return value;
}

template <class Number>
std::string printed(Number value) {
    std::array<char, 64> buffer{};
    const std::to_chars_result result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), result.ptr};
}

// Lines

struct Line {
    std::string raw;                 // with its end
    bool isOurs = false;             // an entry or the head of our section
    std::optional<std::string> key;  // of an entry of our section
    std::string escapedValue;
};

struct Entry {
    std::string_view key;
    std::string_view value;
};

std::string_view withoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

/// An entry with open quotes, or one that goes on in the next line, is not understood.
std::optional<Entry> entryIn(std::string_view line) {
    if (line.starts_with('#')) return std::nullopt;
    std::size_t equals = std::string_view::npos;
    bool inQuotes = false;
    std::size_t end = 0;
    for (; end < line.size() && (line[end] != ';' || inQuotes); ++end) {
        if (line[end] == '"') inQuotes = !inQuotes;
        if (line[end] == '=' && equals == std::string_view::npos) equals = end;
        if (line[end] == '\\' && ++end == line.size()) return std::nullopt;
    }
    if (inQuotes || equals == std::string_view::npos) return std::nullopt;
    const std::string_view key = trimmed(line.substr(0, equals));
    if (key.empty()) return std::nullopt;
    return Entry{key, line.substr(equals + 1, end - equals - 1)};
}

std::string_view sectionName(std::string_view head) {
    return trimmed(head.substr(1, std::min(head.find(']'), head.size()) - 1));
}

std::vector<std::string_view> linesWithEnds(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t lineEnd = text.find_first_of("\r\n");
        std::size_t size = lineEnd == std::string_view::npos ? text.size() : lineEnd + 1;
        if (text.substr(size - 1).starts_with("\r\n")) ++size;
        lines.push_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return lines;
}

std::vector<Line> parsedLines(std::string_view content) {
    std::vector<Line> lines;
    bool inOurSection = true;  // what comes before any section counts as [General]
    for (const std::string_view raw : linesWithEnds(content)) {
        Line line{.raw = std::string(raw), .isOurs = false, .key = {}, .escapedValue = {}};
        std::string_view text = lines.empty() ? withoutByteOrderMark(raw) : raw;
        text = withoutLeadingBlanks(text.substr(0, text.find_first_of("\r\n")));
        if (text.starts_with('[')) {
            inOurSection = equalsIgnoringAsciiCase(sectionName(text), kSection);
            line.isOurs = inOurSection;
        } else if (const std::optional<Entry> entry = entryIn(text); entry && inOurSection) {
            line.isOurs = true;
            line.key = unescapedIniKey(entry->key);
            line.escapedValue = entry->value;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string_view lineEndOf(std::string_view content) {
    const std::size_t lineFeed = content.find('\n');
    const bool isCrLf = lineFeed != std::string_view::npos && lineFeed > 0 && content[lineFeed - 1] == '\r';
    return isCrLf ? "\r\n" : "\n";
}

void endLastLine(std::vector<Line>& lines, std::string_view lineEnd) {
    if (lines.empty()) return;
    std::string& last = lines.back().raw;
    if (!withoutByteOrderMark(last).empty() && !last.ends_with('\n') && !last.ends_with('\r')) last += lineEnd;
}

void insertEntry(std::vector<Line>& lines, std::string raw, std::string_view lineEnd) {
    auto after = std::find_if(lines.rbegin(), lines.rend(), [](const Line& line) { return line.isOurs; }).base();
    const bool isFirst = after == lines.begin();
    if (isFirst || after == lines.end()) endLastLine(lines, lineEnd);
    if (isFirst) {
        Line head;
        head.raw =
            (lines.empty() ? "" : std::string(lineEnd)) + '[' + std::string(kSection) + ']' + std::string(lineEnd);
        lines.push_back(std::move(head));
        after = lines.end();
    }
    Line entry;
    entry.raw = std::move(raw);
    lines.insert(after, std::move(entry));
}

/// The content with the last entry of `key` replaced, or a new one, or without it; all other entries of it are dropped.
std::string changedContent(std::string_view content, std::string_view key,
                           const std::optional<std::string>& escapedValue) {
    std::vector<Line> lines = parsedLines(content);
    const std::string_view lineEnd = lineEndOf(content);
    const auto isOfKey = [key](const Line& line) { return line.key == key; };
    const std::string mark = content.starts_with("\xEF\xBB\xBF") ? "\xEF\xBB\xBF" : "";
    if (!mark.empty()) lines.front().raw.erase(0, mark.size());
    const auto last = std::find_if(lines.rbegin(), lines.rend(), isOfKey);
    if (escapedValue) {
        std::string raw = escapedIniKey(key) + '=' + *escapedValue + std::string(lineEnd);
        if (last == lines.rend()) {
            insertEntry(lines, std::move(raw), lineEnd);
        } else {
            last->raw = std::move(raw);
            last->key.reset();
        }
    }
    std::erase_if(lines, isOfKey);
    std::string result = mark;
    for (const Line& line : lines) result += line.raw;
    return result;
}

std::map<std::string, std::optional<std::string>, std::less<>> valuesIn(std::string_view content) {
    std::map<std::string, std::optional<std::string>, std::less<>> values;
    for (const Line& line : parsedLines(content)) {
        if (!line.key) continue;
        std::optional<std::string> value = unescapedIniValue(line.escapedValue);
        if (value == kNoValueMark) {
            values.erase(*line.key);
        } else {
            values.insert_or_assign(*line.key, std::move(value));
        }
    }
    return values;
}

}  // namespace

IniSettings::IniSettings(FileSystem& files, fs::path path) : files_(files), path_(std::move(path)) {
    const std::expected<std::string, std::string> content = readFile();
    if (content) {
        values_ = valuesIn(*content);
    } else {
        problem_ = content.error();
    }
}

std::optional<std::string> IniSettings::text(std::string_view key) const {
    const std::string* const value = stored(key);
    if (!value) return std::nullopt;
    if (value->starts_with("@@")) return value->substr(1);
    if (const std::optional<std::string_view> inner = marked(*value, kIniStringMark)) return std::string(*inner);
    const bool isOtherType = value->starts_with('@') && value->ends_with(')');
    return isOtherType ? std::nullopt : std::optional(*value);
}

std::optional<bool> IniSettings::boolean(std::string_view key) const {
    const std::string* const value = stored(key);
    if (!value) return std::nullopt;
    if (*value == "1" || equalsIgnoringAsciiCase(*value, "true")) return true;
    if (*value == "0" || equalsIgnoringAsciiCase(*value, "false")) return false;
    return std::nullopt;
}

std::optional<std::int64_t> IniSettings::integer(std::string_view key) const {
    const std::string* const value = stored(key);
    return value ? parsed<std::int64_t>(*value) : std::nullopt;
}

std::optional<double> IniSettings::number(std::string_view key) const {
    const std::string* const value = stored(key);
    const std::optional<double> result = value ? parsed<double>(*value) : std::nullopt;
    return result && std::isfinite(*result) ? result : std::nullopt;
}

std::optional<Bytes> IniSettings::data(std::string_view key) const {
    const std::string* const value = stored(key);
    const std::optional<std::string_view> inner = value ? marked(*value, kIniDataMark) : std::nullopt;
    if (!inner) return std::nullopt;
    Bytes bytes;
    for (const char32_t c : codePoints(*inner)) {
        if (c > 0xFF) return std::nullopt;
        bytes.data.push_back(static_cast<std::uint8_t>(c));
    }
    return bytes;
}

Settings::Stored IniSettings::setText(std::string_view key, std::string_view value) {
    if (!isValidUtf8(value)) return std::unexpected("The text for " + std::string(key) + " is not UTF-8");
    return change(key, escapedIniText(value));
}

Settings::Stored IniSettings::setBoolean(std::string_view key, bool value) {
    return change(key, value ? "true" : "false");
}

Settings::Stored IniSettings::setInteger(std::string_view key, std::int64_t value) {
    return change(key, printed(value));
}

Settings::Stored IniSettings::setNumber(std::string_view key, double value) {
    if (!std::isfinite(value)) return std::unexpected("The number for " + std::string(key) + " is not finite");
    return change(key, printed(value));
}

Settings::Stored IniSettings::setData(std::string_view key, const Bytes& value) {
    return change(key, escapedIniData(value));
}

Settings::Stored IniSettings::remove(std::string_view key) { return change(key, std::nullopt); }

std::vector<std::string> IniSettings::keys() const {
    std::vector<std::string> result;
    for (const auto& [key, value] : values_) result.push_back(key);
    return result;
}

std::expected<std::string, std::string> IniSettings::readFile() const {
    FileResult<std::string> content = files_.read(path_);
    if (!content && content.error().kind == FileError::Kind::notFound) return std::string();
    if (!content) return std::unexpected(content.error().message);
    if (!isValidUtf8(*content)) return std::unexpected(path_.string() + ": not UTF-8 text");
    return std::move(*content);
}

Settings::Stored IniSettings::change(std::string_view key, const std::optional<std::string>& escapedValue) {
    if (key.empty() || !isValidUtf8(key)) return std::unexpected("A key of the settings is empty or not UTF-8");
    const std::expected<std::string, std::string> before = readFile();
    if (!before) {
        problem_ = before.error();
        return std::unexpected(before.error());
    }
    problem_.reset();
    const std::string after = changedContent(*before, key, escapedValue);
    if (after != *before) {
        if (Stored written = write(after); !written) return written;
    }
    values_ = valuesIn(after);
    return {};
}

Settings::Stored IniSettings::write(std::string_view content) {
    const fs::path folder = path_.parent_path();
    FileResult<void> result;
    if (!folder.empty()) result = files_.createFolders(folder);
    if (result) result = writeAtomically(files_, path_, content);
    if (!result) return std::unexpected(result.error().message);
    return {};
}

const std::string* IniSettings::stored(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() || !found->second ? nullptr : &*found->second;
}

}  // namespace tessary
