#include "cli/output.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/text.h"

namespace tessary {
namespace {

/// C0 and C1 controls, DEL, and the marks that turn the direction of what follows.
bool isControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

std::string padded(const std::string& text, std::size_t columns, const TextServices& services) {
    return text + std::string(columns - std::min(columns, columnsOf(text, services)), ' ');
}

/// The longest start of `text` that fits, cut at white space where possible; at least one code point.
std::string_view fittingStart(std::string_view text, std::size_t columns, const TextServices& services) {
    std::size_t width = 0;
    std::size_t end = 0;
    std::size_t lastBlank = 0;
    while (end < text.size()) {
        std::size_t next = end + 1;
        while (next < text.size() && (static_cast<unsigned char>(text[next]) & 0xC0) == 0x80) ++next;
        const std::size_t step = columnsOf(text.substr(end, next - end), services);
        if (text[end] == ' ') lastBlank = end;
        if (width + step > columns && end > 0) return text.substr(0, lastBlank > 0 ? lastBlank : end);
        width += step;
        end = next;
    }
    return text;
}

}  // namespace

std::size_t columnsOf(std::string_view text, const TextServices& services) {
    std::size_t columns = 0;
    for (const char32_t c : codePoints(text)) columns += static_cast<std::size_t>(services.columns(c));
    return columns;
}

std::string onOneLine(std::string_view text) {
    std::string line;
    bool blank = false;
    for (const char32_t c : codePoints(trimmed(text))) {
        if (isControl(c) || c == U' ') {
            blank = true;
            continue;
        }
        if (blank && !line.empty()) line += ' ';
        blank = false;
        appendUtf8(line, c);
    }
    return line;
}

std::string withoutControls(std::string_view text) {
    std::string clean;
    for (const char32_t c : codePoints(text)) {
        if (c == U'\n' || c == U'\t' || !isControl(c)) appendUtf8(clean, c);
    }
    return clean;
}

std::string cutToColumns(std::string_view text, std::size_t columns, const TextServices& services) {
    if (columnsOf(text, services) <= columns) return std::string(text);
    std::string cut;
    std::size_t width = 1;  // of the "…"
    for (const char32_t c : codePoints(text)) {
        width += static_cast<std::size_t>(services.columns(c));
        if (width > columns) break;
        appendUtf8(cut, c);
    }
    return cut + "…";
}

std::vector<std::string> wrapped(std::string_view text, std::size_t columns, const TextServices& services) {
    std::vector<std::string> lines;
    const std::string clean = replacedAll(withoutControls(text), "\t", "    ");
    for (std::string_view rest : splitLines(clean)) {
        do {
            const std::string_view line = fittingStart(rest, columns, services);
            lines.emplace_back(line);
            rest.remove_prefix(line.size());
            if (rest.starts_with(' ')) rest.remove_prefix(1);
        } while (!rest.empty());
    }
    return lines;
}

void TextTable::print(std::ostream& out, const TextServices& services) const {
    std::vector<std::vector<std::string>> lines{head_};
    for (const std::vector<std::string>& row : rows_) lines.push_back(row);
    std::vector<std::size_t> widths(head_.size());
    for (std::vector<std::string>& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            line[i] = cutToColumns(line[i], kWidestCell, services);
            widths[i] = std::max(widths[i], columnsOf(line[i], services));
        }
    }
    for (const std::vector<std::string>& line : lines) {
        std::string text;
        for (std::size_t i = 0; i < line.size(); ++i) text += padded(line[i], widths[i] + 2, services);
        text.erase(text.find_last_not_of(' ') + 1);
        out << text << '\n';
    }
}

std::string localTime(Date moment, const LocalCalendar& calendar) {
    const CivilTime time = calendar.civilTime(moment);
    return fmt::format("{} {:02}:{:02}", dayKey(time.day), time.hour, time.minute);
}

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
    return fmt::format("{} {}", count, count == 1 ? one : many);
}

}  // namespace tessary
