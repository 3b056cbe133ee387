#include "library/markdown_note.h"

#include <gtest/gtest.h>

#include "platform/adapters/icu/icu_calendar.h"
#include "platform/adapters/yaml/yaml_front_matter.h"

namespace tessary {
namespace {

using Texts = std::vector<std::string>;

MarkdownNote noteOf(std::string_view text) {
    return readMarkdownNote(text, YamlFrontMatter(), IcuCalendar("Europe/Berlin"));
}

TEST(MarkdownNoteTest, TheFirstHeadingIsTheTitle) {
    struct Case {
        std::string_view text;
        std::optional<std::string> title;
        std::string_view body;
    };
    const Case cases[] = {
        {"# Cells\n\nText", "Cells", "Text"},
        {"\n  ### Cells ###  \nText\n", "Cells", "Text"},
        {"# C# and F#\n", "C# and F#", ""},
        {"Cells\n=====\n    code", "Cells", "    code"},
        {"Cells\n---\nText", "Cells", "Text"},
        {"Intro\n\n## Cells\nText", "Cells", "Intro\n\n## Cells\nText"},
        {"```sh\n# not this\n```\n# Cells", "Cells", "```sh\n# not this\n```\n# Cells"},
        {"- ~~~\n  # not this\n  ~~~\n# Cells", "Cells", "- ~~~\n  # not this\n  ~~~\n# Cells"},
        {"> ```\n> # not this\n\n# Cells", "Cells", "> ```\n> # not this\n\n# Cells"},
        {"#tag\n    # code\n####### seven\n#\n", std::nullopt, "#tag\n    # code\n####### seven\n#"},
        {"- item\n---\na\nb\n---\n| a |\n---\n", std::nullopt, "- item\n---\na\nb\n---\n| a |\n---"},
        {"", std::nullopt, ""},
    };
    for (const Case& each : cases) {
        const MarkdownNote note = noteOf(each.text);
        EXPECT_EQ(note.title, each.title) << each.text;
        EXPECT_EQ(note.body, each.body) << each.text;
    }
}

TEST(MarkdownNoteTest, TitlesArePlainText) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"**Cells** and *their _inner_ parts*", "Cells and their inner parts"},
        {"snake_case_name, 2 * 3 * 4, a == b", "snake_case_name, 2 * 3 * 4, a == b"},
        {"~~old~~ ==new== ~one~", "old new ~one~"},
        {"The `a*b*c` and ``x`y`` marks", "The a*b*c and x`y marks"},
        {"[Cells](https://example.org/a_(b) \"t\") [two][ref] [3]", "Cells two [3]"},
        {"[[Biology/Cells|the cells]] of [[Life]]", "the cells of Life"},
        {"![icon](i.png) Cells", "icon Cells"},
        {"\\*not\\* \\# so", "*not* # so"},
        {"Lone * and [ and ` marks", "Lone * and [ and ` marks"},
    };
    for (const auto& [written, plain] : cases) EXPECT_EQ(noteOf("# " + std::string(written)).title, plain) << written;
}

TEST(MarkdownNoteTest, FrontMatterFillsThePage) {
    const MarkdownNote note = noteOf(
        "---\ntitle: \"The Cell\"\ntags: ['#bio', cells, bio]\nkeywords: exam, cells ,\n"
        "date: 2024-05-01\nmodified: 2024-05-02T10:00:00+00:00\n---\n\n# Heading\nText\n");
    EXPECT_EQ(note.title, "The Cell");
    EXPECT_EQ(note.body, "# Heading\nText");
    EXPECT_EQ(note.tags, (Texts{"bio", "cells", "exam"}));
    EXPECT_EQ(note.date, parseIso8601("2024-04-30T22:00:00Z"));
    EXPECT_EQ(note.updatedAt, parseIso8601("2024-05-02T10:00:00Z"));
    EXPECT_EQ(note.problems, Texts{});
    EXPECT_EQ(noteOf("---\ntitle: Cells\n...\n# Cells\nText").body, "Text");
}

TEST(MarkdownNoteTest, DatesWithoutAZoneAreLocal) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"2024-01-15", "2024-01-14T23:00:00Z"},
        {"2024-03-31", "2024-03-30T23:00:00Z"},  // the clocks change in this night
        {"2024-07-15 08:30", "2024-07-15T06:30:00Z"},
        {"2024-03-31T08:30:00", "2024-03-31T06:30:00Z"},
        {"2024-07-15T08:30:00Z", "2024-07-15T08:30:00Z"},
        {"2024-07-15 08:30:00 -0400", "2024-07-15T12:30:00Z"},
    };
    for (const auto& [written, moment] : cases) {
        EXPECT_EQ(noteOf("---\ncreated: " + std::string(written) + "\n---\n").date, parseIso8601(moment)) << written;
    }
}

TEST(MarkdownNoteTest, NoFrontMatterOfTheUserIsLost) {
    const std::string_view heads[] = {
        "---\ntitle: A\naliases: [x]\n---",      "---\ntitle: A\n# remember\n---",
        "---\ntitle: A\nextra:\n  deep: x\n---", "---\ntitle: A\ndate: 2024-01-01\ncreated: 2023-01-01\n---",
        "---\ntitle: A\ndate: someday\n---",     "---\n  title: A\n  extra:\n    deep: x\n---",
        "---\n{title: A, extra: x}\n---",        "---\ntitle: [A\n---",
        "---\nJust a line of text\n---",
    };
    for (const std::string_view head : heads) {
        const MarkdownNote note = noteOf(std::string(head) + "\n\n# A\nText");
        EXPECT_EQ(note.title, "A");
        EXPECT_EQ(note.body, std::string(head) + "\n\nText");
    }
    EXPECT_EQ(noteOf("---\ntitle: A\ndate: someday\n---").problems,
              Texts{"has a date that cannot be read: date: someday"});
    EXPECT_EQ(noteOf("---\ntitle: [A\n---").problems.size(), 1U);
    EXPECT_EQ(noteOf("---\ntitle: A\ndate:\n---\nText").body, "Text");
    EXPECT_EQ(noteOf("---\n# A\nno end").body, "---\n# A\nno end");
}

TEST(MarkdownNoteTest, HostileTextsAreReadInReasonableTime) {
    constexpr std::size_t kBytes = 1'000'000;
    for (const std::string_view piece : {"![", "[", "`", "![[", "![](", "![](<", "![a](b) ", "**", "*a _b ", "[[a|",
                                         "\\", "~~~\n", "> ", "- ", "`` ` ", "![a]", "\n", "# "}) {
        std::string text = "# x";
        while (text.size() < kBytes) text += piece;
        for (std::size_t i = 0; i < kBytes / 8; ++i) text += "])";
        EXPECT_TRUE(noteOf(text).title) << piece;
    }
}

}  // namespace
}  // namespace tessary
