#include "library/note_front_matter.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <set>

#include "base/text.h"
#include "library/markdown_scan.h"

namespace tessary {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

/// What the wall clock shows at `moment`, as if it were UTC.
Date wallClock(Date moment, const LocalCalendar& calendar) {
    const CivilTime time = calendar.civilTime(moment);
    const std::string text = fmt::format("{}T{:02}:{:02}:{:02}", dayKey(time.day), time.hour, time.minute, time.second);
    return parseIso8601(text).value_or(moment);
}

/// The moment at which the wall clock shows `reading`.
Date momentOf(Date reading, const LocalCalendar& calendar) {
    Date moment = reading;
    for (int pass = 0; pass < 2; ++pass) {  // the second one sees the offset of the right side of a clock change
        const Date whole{std::floor(moment.seconds)};
        moment = reading - (wallClock(whole, calendar) - whole);
    }
    return moment;
}

std::optional<Date> readDate(std::string_view text, const LocalCalendar& calendar) {
    constexpr std::size_t kDayLength = 10;
    std::string stamp(trimmed(text));
    const std::size_t zone = stamp.find_first_of("Zz+-", kDayLength);
    if (zone != kNone && stamp[zone - 1] == ' ') stamp.erase(zone - 1, 1);
    const std::optional<Date> parsed = parseIso8601(stamp);
    if (!parsed || zone != kNone) return parsed;
    if (stamp.size() > kDayLength) return momentOf(*parsed, calendar);
    return calendar.startOfDay(momentOf(*parsed + kSecondsPerDay / 2, calendar));
}

/// Brings the keys of a head into a note.
class HeadTaker {
public:
    HeadTaker(const FrontMatter& head, const LocalCalendar& calendar, MarkdownNote& note)
        : head_(head), calendar_(calendar), note_(note) {
        takeTitle();
        for (const std::string_view key : {"tags", "tag", "keywords"}) takeTags(key);
        takeDate({"date", "created", "created_at"}, note_.date);
        takeDate({"updated", "modified", "lastmod"}, note_.updatedAt);
    }

    /// The reader leaves out nested maps and comments, so the text itself is looked at: keys stand at the beginning of
    /// their lines.
    [[nodiscard]] bool tookAll(std::string_view yaml) const {
        if (isBlank(charAt(withoutOuterBlankLines(yaml), 0))) return false;
        return std::ranges::all_of(splitLines(yaml), [&](std::string_view line) {
            if (trimmed(line).empty() || std::string_view(" \t-").contains(line.front())) return true;
            std::string key = asciiLowered(trimmed(line.substr(0, line.find(':'))));
            std::erase_if(key, [](char c) { return c == '"' || c == '\''; });
            return taken_.contains(key);
        });
    }

private:
    const std::vector<std::string>* textsOf(std::string_view key) const {
        const auto found = head_.find(key);
        return found == head_.end() ? nullptr : &found->second;
    }

    void takeTitle() {
        const std::vector<std::string>* const texts = textsOf("title");
        if (texts == nullptr || texts->size() > 1) return;
        taken_.emplace("title");
        const std::string title = texts->empty() ? "" : replacedAll(trimmed(texts->front()), "\n", " ");
        if (!title.empty()) note_.title = title;
    }

    void takeTags(std::string_view key) {
        const std::vector<std::string>* const texts = textsOf(key);
        if (texts == nullptr) return;
        taken_.emplace(key);
        if (texts->size() == 1) {
            for (const std::string_view tag : split(texts->front(), ',')) addTag(tag);
        } else {
            for (const std::string& tag : *texts) addTag(tag);
        }
    }

    void addTag(std::string_view text) {
        std::string_view tag = trimmed(text);
        while (tag.starts_with('#')) tag = trimmed(tag.substr(1));
        if (!tag.empty() && tags_.emplace(tag).second) note_.tags.emplace_back(tag);
    }

    void takeDate(std::initializer_list<std::string_view> keys, std::optional<Date>& date) {
        for (const std::string_view key : keys) {
            const std::vector<std::string>* const texts = textsOf(key);
            if (texts == nullptr || texts->size() > 1 || date) continue;
            const bool isEmpty = texts->empty() || trimmed(texts->front()).empty();
            if (!isEmpty) date = readDate(texts->front(), calendar_);
            if (isEmpty || date) {
                taken_.emplace(key);
            } else {
                note_.problems.push_back(fmt::format("has a date that cannot be read: {}: {}", key, texts->front()));
            }
        }
    }

    const FrontMatter& head_;
    const LocalCalendar& calendar_;
    MarkdownNote& note_;
    std::set<std::string, std::less<>> taken_;
    std::set<std::string, std::less<>> tags_;
};

std::string_view withoutTrailingBlanks(std::string_view line) {
    return line.substr(0, line.find_last_not_of(" \t") + 1);
}

}  // namespace

NoteHead splitNoteHead(std::string_view text) {
    const std::vector<std::string_view> lines = splitLines(text);
    if (lines.empty() || withoutTrailingBlanks(lines.front()) != "---") return {{}, {}, text};
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::string_view mark = withoutTrailingBlanks(lines[i]);
        if (mark != "---" && mark != "...") continue;
        const std::size_t yamlBegin = placeIn(text, lines[1]);
        const std::size_t begin = placeIn(text, lines[i]);
        const std::size_t end = begin + lines[i].size();
        return {.block = text.substr(0, end),
                .yaml = text.substr(yamlBegin, begin - yamlBegin),
                .rest = text.substr(std::min(end + 1, text.size()))};
    }
    return {{}, {}, text};
}

FrontMatterUse takeFrontMatter(MarkdownNote& note, std::string_view yaml, const FrontMatterReader& frontMatter,
                               const LocalCalendar& calendar) {
    const std::expected<FrontMatter, std::string> head = frontMatter.read(yaml);
    if (!head) {
        note.problems.push_back("has front matter that cannot be read: " + head.error());
        return FrontMatterUse::partly;
    }
    return HeadTaker(*head, calendar, note).tookAll(yaml) ? FrontMatterUse::whole : FrontMatterUse::partly;
}

}  // namespace tessary
