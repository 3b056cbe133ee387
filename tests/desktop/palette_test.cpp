#include <gtest/gtest.h>

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include "base/text.h"
#include "desktop/desk_rig.h"
#include "desktop/search/command_palette.h"
#include "desktop/search/fuzzy_match.h"

namespace tessary {
namespace {

TEST(FuzzyScoreTest, TheBetterNameComesFirst) {
    struct Case {
        std::string_view typed;
        std::string_view better;
        std::string_view worse;  // starts with "!" when it must not match at all
    };
    for (const auto& [typed, better, worse] : {
             Case{"nn", "new notebook", "running"},
             Case{"new", "new page", "renewal"},
             Case{"page", "all pages", "photography gear"},
             Case{"rev", "review all", "archive everything"},
             Case{"gost", "go to study", "gone fast"},
             Case{"study", "study", "study group"},
             Case{"ar", "archive", "calendar"},
             Case{"ab", "ab", "!ba"},
             Case{"zz", "zigzag", "!z"},
             Case{"клет", "клетка", "!книга"},
         }) {
        const auto good = fuzzyScore(codePoints(typed), codePoints(better));
        const bool mustMiss = worse.starts_with('!');
        const auto bad = fuzzyScore(codePoints(typed), codePoints(worse.substr(mustMiss ? 1 : 0)));
        ASSERT_TRUE(good) << typed << " in " << better;
        EXPECT_EQ(bad.has_value(), !mustMiss) << typed << " in " << worse;
        if (bad) {
            EXPECT_GT(*good, *bad) << typed << ": " << better << " before " << worse;
        }
    }
    EXPECT_FALSE(fuzzyScore(U"", U"anything"));
    EXPECT_FALSE(fuzzyScore(U"a", U""));
    EXPECT_EQ(fuzzyPositions(U"nb", U"new notebook"), (std::vector<std::size_t>{0, 8}));
    EXPECT_TRUE(fuzzyPositions(U"ba", U"ab").empty());
    const std::u32string longName = std::u32string(200, U'x') + U"end";
    EXPECT_FALSE(fuzzyScore(U"end", longName)) << "too far back";
    EXPECT_EQ(fuzzyPositions(U"xx", longName).size(), 2U);
    EXPECT_EQ(fuzzyPositions(U"note", U"not a notebook"), (std::vector<std::size_t>{6, 7, 8, 9}));
}

class PaletteTest : public testing::Test, public DeskRig<> {
protected:
    PaletteTest() {
        palette_.setDesk(&desk);
        addCommand("New notebook", "create", {"Ctrl+Shift+N", "Ctrl+Alt+B"});
        addCommand("Go to Study", "due cards");
        addCommand("Review all due cards", "learn");
    }

    Command& addCommand(const QString& title, const QString& keywords, const QStringList& keys = {}) {
        auto* const command = new Command(&palette_);
        command->setProperty("title", title);
        command->setProperty("keywords", keywords);
        command->setProperty("keys", keys);
        auto commands = palette_.commandsForQml();
        commands.append(&commands, command);
        return *command;
    }
    [[nodiscard]] QVariant cell(int row, CommandPalette::Role role) const {
        return palette_.data(palette_.index(row), role);
    }
    [[nodiscard]] std::string shown() const {
        QStringList rows;
        for (int row = 0; row < palette_.rowCount(); ++row)
            rows.append(cell(row, CommandPalette::TitleRole).toString());
        return rows.join("; ").toStdString();
    }
    std::string shownFor(const QString& query) {
        palette_.open();
        palette_.setQuery(query);
        return shown();
    }
    PageId addPageEdited(const std::string& title, const char* edited, std::optional<NotebookId> notebook = {}) {
        JournalEntry page;
        page.title = title;
        page.date = *parseIso8601(edited);
        page.notebookID = notebook;
        return library().addPage(page).value();
    }

    CommandPalette palette_;
};

TEST_F(PaletteTest, WhatWasEditedLastComesFirstThenTheCommands) {
    const QAbstractItemModelTester tester(&palette_);
    const NotebookId notebook = library().addNotebook("Botany");
    addPageEdited("Moss", "2026-11-20T10:00:00Z", notebook);
    addPageEdited("Loose", "2026-11-21T09:00:00Z");
    for (int i = 0; i < 10; ++i) addPageEdited("Old", "2026-01-01T00:00:00Z");
    EXPECT_EQ(shownFor(""), "Loose; Moss; Botany; Old; Old; Old; New notebook; Go to Study; Review all due cards");
    EXPECT_EQ(cell(0, CommandPalette::SectionRole), "Recent");
    EXPECT_EQ(cell(6, CommandPalette::SectionRole), "Commands");
    EXPECT_EQ(cell(6, CommandPalette::KeyTextRole), "Ctrl Shift N");
    EXPECT_EQ(cell(1, CommandPalette::DetailRole), "Botany");
}

TEST_F(PaletteTest, WhatIsTypedIsLookedForInNamesAndInOtherWordsOfCommands) {
    const NotebookId notebook = library().addNotebook("Botany");
    addPage("Stüdien der Moose", notebook);
    addPage("New moss", notebook);
    struct Case {
        const char* typed;
        const char* rows;
    };
    for (const auto& [typed, rows] : {
             Case{"new", "New notebook; New moss"},
             Case{"bot", "Botany"},
             Case{"STUD", "Stüdien der Moose; Go to Study"},
             Case{"learn", "Review all due cards"},
             Case{"earn", ""},
             Case{"  nn ", "New notebook"},
             Case{"qqq", ""},
         }) {
        EXPECT_EQ(shownFor(typed), rows) << typed;
    }
    ASSERT_EQ(shownFor("stü"), "Stüdien der Moose; Go to Study");
    EXPECT_EQ(cell(0, CommandPalette::MarksRole), (QVariantList{QVariantMap{{"start", 0}, {"length", 3}}}));
}

TEST_F(PaletteTest, RowsAreDoneAndOpened) {
    const NotebookId notebook = library().addNotebook("Botany");
    const PageId page = addPage("Moss", notebook);
    QSignalSpy pages(&palette_, &CommandPalette::pageChosen);
    QSignalSpy notebooks(&palette_, &CommandPalette::notebookChosen);
    shownFor("moss");
    palette_.run(0);
    palette_.run(1);
    palette_.run(-1);
    ASSERT_EQ(pages.size(), 1);
    EXPECT_EQ(pages[0], (QVariantList{toQml(notebook), toQml(page)}));
    ASSERT_TRUE(library().deletePage(page));
    palette_.run(0);
    EXPECT_EQ(pages.size(), 1) << "it is gone meanwhile";
    shownFor("botany");
    palette_.run(0);
    EXPECT_EQ(notebooks.size(), 1);

    Command& command = addCommand("Water the plants", "");
    QSignalSpy triggered(&command, &Command::triggered);
    shownFor("water");
    palette_.run(0);
    EXPECT_EQ(triggered.size(), 1);
    command.setProperty("enabled", false);
    palette_.run(0);
    EXPECT_EQ(triggered.size(), 1);
    EXPECT_EQ(shownFor("water"), "");
    command.setProperty("enabled", true);
    command.setProperty("listed", false);
    EXPECT_EQ(shownFor("water"), "");
}

}  // namespace
}  // namespace tessary
