#include "base/text.h"
#include "library/store_fixture.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

class StoreShelf : public StoreTest {
protected:
    static JournalEntry pageIn(NotebookId notebook, const std::string& title) {
        JournalEntry made = page(title);
        made.notebookID = notebook;
        return made;
    }
    static Exam examOf(NotebookId notebook, const std::string& title) {
        Exam exam;
        exam.notebookID = notebook;
        exam.title = title;
        return exam;
    }
    std::string listed(const JournalStore& store) const {
        std::vector<const JournalEntry*> pages;
        for (const JournalEntry& each : store.entries()) pages.push_back(&each);
        store.sortForListing(pages, [](std::string_view title) { return asciiLowered(title); });
        std::string titles;
        for (const JournalEntry* const each : pages) titles += each->title;
        return titles;
    }
};

TEST_F(StoreShelf, ListsByTheChosenModeAndOrderWithPinnedPagesFirst) {
    const auto store = open();
    std::map<std::string, PageId> pages;
    for (const char* title : {"b", "C", "a", "d"}) {
        pages[title] = *store->addPage(page(title));
        clock.advance(60);
    }
    ASSERT_TRUE(store->updatePage(*store->entries().find(pages["C"])));
    const auto choose = [&](std::string_view mode, std::string_view order) {
        EXPECT_TRUE(settings.setText("entrySortMode", mode));
        EXPECT_TRUE(settings.setText("sortOrder", order));
    };
    struct Case {
        const char* mode;
        const char* order;
        const char* expected;
        const char* withAPinned;
    };
    EXPECT_EQ(listed(*store), "daCb");
    for (const Case& c : {Case{"created", "newest", "daCb", "adCb"},
                          {"created", "oldest", "bCad", "abCd"},
                          {"edited", "newest", "Cdab", "aCdb"},
                          {"edited", "oldest", "badC", "abdC"},
                          {"title", "newest", "abCd", "abCd"},
                          {"title", "oldest", "dCba", "adCb"},
                          {"unknown", "unknown", "daCb", "adCb"}}) {
        SCOPED_TRACE(std::string(c.mode) + " " + c.order);
        choose(c.mode, c.order);
        EXPECT_EQ(listed(*store), c.expected);
        ASSERT_TRUE(store->setPinned(pages["a"], true));
        ASSERT_TRUE(store->setPinned(pages["a"], true));
        EXPECT_EQ(store->pinnedPages(), std::vector{pages["a"]});
        EXPECT_EQ(listed(*store), c.withAPinned);
        ASSERT_TRUE(store->setPinned(pages["a"], false));
    }
    EXPECT_TRUE(store->pinnedPages().empty());
    EXPECT_FALSE(store->setPinned(PageId{ids.next()}, true));
}

TEST_F(StoreShelf, TagsKeepTheirColours) {
    using Colors = std::map<std::string, std::string>;
    const auto store = open();
    EXPECT_TRUE(store->tagColors().empty());
    ASSERT_TRUE(store->setTagColor("Über \"x\"", "FF0000"));
    ASSERT_TRUE(store->setTagColor("b", "00FF00"));
    ASSERT_TRUE(store->setTagColor("b", "0000FF"));
    EXPECT_EQ(open()->tagColors(), (Colors{{"Über \"x\"", "FF0000"}, {"b", "0000FF"}}));
    ASSERT_TRUE(store->setTagColor("b", std::nullopt));
    ASSERT_TRUE(store->setTagColor("none", std::nullopt));
    EXPECT_EQ(store->tagColors(), (Colors{{"Über \"x\"", "FF0000"}}));
    ASSERT_TRUE(settings.setData("tagColors", Bytes{{'x'}}));
    EXPECT_TRUE(store->tagColors().empty());
}

TEST_F(StoreShelf, MediaNeverReplaceOneAnother) {
    const auto store = open();
    const std::string longStem = "ä" + std::string(250, 'x');
    struct Case {
        fs::path source;
        std::string content;
        std::string expected;
    };
    const Case cases[] = {
        {"/in/a.tar.png", "one", "a.tar.png"},
        {"/in/a.tar.png", "one", "a.tar.png"},
        {"/in/a.tar.png", "two", "a.tar-2.png"},
        {"/in/a.tar.png", "three", "a.tar-3.png"},
        {"/in/a.tar.png", "two", "a.tar-2.png"},
        {"/in/A.tar.png", "four", "A.tar.png"},
        {"/in/none", "five", "none"},
        {"/in/none", "six", "none-2"},
        {"/in/.hidden", "seven", ".hidden"},
        {"/in/" + longStem + ".png", "eight", longStem.substr(0, 251) + ".png"},
        {"/in/" + longStem + ".png", "nine", longStem.substr(0, 249) + "-2.png"},
        {"/in/" + std::string(250, 'x') + "ää.m", "ten", std::string(250, 'x') + "ä.m"},
        {"/in/" + std::string(251, 'x') + "ä.m", "eleven", std::string(251, 'x') + "ä.m"},
        {"/in/" + std::string(252, 'x') + "ä.m", "twelve", std::string(252, 'x') + ".m"},
        {"/in/b\xff.png", "thirteen", "b\uFFFD.png"},
        {"/in/a." + std::string(250, 'y'), "fourteen", "a." + std::string(250, 'y')},
        {"/in/a." + std::string(250, 'y'), "fifteen", "a." + std::string(250, 'y') + "-2"},
    };
    for (const Case& c : cases) {
        put(c.source, c.content);
        const auto name = store->addMedia(MediaKind::image, c.source);
        ASSERT_TRUE(name) << name.error();
        EXPECT_EQ(*name, c.expected);
        EXPECT_LE(name->size(), 255U);
        EXPECT_EQ(content(folders.images() / *name), c.content);
    }
    EXPECT_EQ(content(folders.images() / "a.tar.png"), "one");
    ASSERT_TRUE(files.createFolders(folders.covers() / "none"));
    EXPECT_EQ(store->addMedia(MediaKind::cover, "/in/none"), "none-2");
}

TEST_F(StoreShelf, MediaThatCannotBeCopiedAreRefused) {
    const auto store = open();
    put("/in/a\\b.pdf", "x");
    put("/in/full.pdf", "x");
    ASSERT_TRUE(files.createFolders("/in/folder.pdf"));
    for (const char* source : {"/in/missing.pdf", "/in/folder.pdf", "/in/a\\b.pdf", "/in/", ""}) {
        EXPECT_FALSE(store->addMedia(MediaKind::pdf, source)) << source;
    }
    files.failAfter(2, FileError::Kind::noSpace);
    EXPECT_FALSE(store->addMedia(MediaKind::pdf, "/in/full.pdf"));
    EXPECT_TRUE(names(folders.pdfs(), "").empty());
    ASSERT_EQ(console.lines().size(), 3U);
    for (const std::string& line : console.lines()) {
        EXPECT_TRUE(line.starts_with("Notara: pdf store failed — ")) << line;
    }
}

TEST_F(StoreShelf, ExamsAreKeptUntilTheyAreDeleted) {
    const auto store = open();
    const NotebookId notebook = store->addNotebook("N");
    EXPECT_FALSE(store->addExam(examOf(NotebookId{ids.next()}, "Lost")));
    const ExamId id = *store->addExam(examOf(notebook, "Midterm"));
    Exam exam = *store->exams().find(id);
    EXPECT_EQ(exam.createdAt, clock.now());
    EXPECT_FALSE(store->addExam(exam));
    exam.title = "Final";
    exam.pageIDs = std::vector<PageId>{};
    ASSERT_TRUE(store->updateExam(exam));
    EXPECT_EQ(open()->exams()[0], exam);
    ASSERT_TRUE(store->deleteExam(id));
    EXPECT_FALSE(store->deleteExam(id));
    EXPECT_FALSE(store->updateExam(exam));
    EXPECT_TRUE(open()->exams().empty());
}

TEST_F(StoreShelf, NotebooksKeepTheirNames) {
    const auto store = open();
    const NotebookId id = store->addNotebook(" ");
    EXPECT_EQ(store->notebooks().find(id)->name, kUntitledNotebook);
    ASSERT_TRUE(store->renameNotebook(id, "Physics"));
    EXPECT_FALSE(store->renameNotebook(NotebookId{ids.next()}, "None"));
    EXPECT_FALSE(store->deleteNotebook(NotebookId{ids.next()}, PagesOfNotebook::goToTrash));
    EXPECT_EQ(open()->notebooks().find(id)->name, "Physics");
}

TEST_F(StoreShelf, ADeletedNotebookTakesItsExamsAlongAndItsPagesAsAsked) {
    for (const PagesOfNotebook choice : {PagesOfNotebook::becomeLoose, PagesOfNotebook::goToTrash}) {
        SCOPED_TRACE(choice == PagesOfNotebook::goToTrash ? "trash" : "loose");
        const auto store = open();
        const NotebookId notebook = store->addNotebook("N");
        const NotebookId other = store->addNotebook("Other");
        const PageId root = *store->addPage(pageIn(notebook, "Root"));
        const PageId child = *store->addPage(page("Child", root));
        const PageId stays = *store->addPage(pageIn(other, "Stays"));
        const ExamId exam = *store->addExam(examOf(notebook, "Exam"));
        const ExamId examOfOther = *store->addExam(examOf(other, "Exam"));
        LibraryChange told;
        const Subscription changes = store->changed.connect([&](const LibraryChange& change) { told = change; });
        ASSERT_TRUE(store->deleteNotebook(notebook, choice));
        EXPECT_EQ(told.notebooks, std::vector{notebook});
        EXPECT_EQ(told.exams, std::vector{exam});
        const auto again = open(StoreAccess::readOnly);
        EXPECT_FALSE(again->notebooks().contains(notebook));
        EXPECT_FALSE(again->exams().contains(exam));
        EXPECT_TRUE(again->exams().contains(examOfOther));
        EXPECT_EQ(again->entries().find(stays)->notebookID, other);
        if (choice == PagesOfNotebook::becomeLoose) {
            EXPECT_EQ(again->entries().find(root)->notebookID, std::nullopt);
            EXPECT_EQ(again->entries().find(child)->notebookID, std::nullopt);
            EXPECT_EQ(again->entries().find(child)->parentID, root);
        } else {
            EXPECT_FALSE(again->entries().contains(root));
            EXPECT_EQ(again->trash().find(child)->deletedAt, again->trash().find(root)->deletedAt);
            EXPECT_EQ(store->restore(root), (std::vector{root, child}));
            EXPECT_EQ(store->entries().find(child)->notebookID, std::nullopt);
        }
    }
}

TEST_F(StoreShelf, SubpagesInAnotherNotebookGoToTheTrashWithTheirParent) {
    const NotebookId notebook{ids.next()};
    Notebook kept;
    kept.id = notebook;
    JournalEntry root = pageIn(notebook, "Root");
    root.id = PageId{ids.next()};
    JournalEntry foreign = pageIn(NotebookId{ids.next()}, "Foreign");
    foreign.id = PageId{ids.next()};
    foreign.parentID = root.id;
    putRecords<Notebook>(folders.notebooks(), {kept});
    putRecords<JournalEntry>(folders.entries(), {foreign, root});
    const auto store = open();
    ASSERT_TRUE(store->deleteNotebook(notebook, PagesOfNotebook::goToTrash));
    EXPECT_TRUE(store->entries().empty());
    EXPECT_EQ(store->restore(root.id), (std::vector{root.id, foreign.id}));
}

}  // namespace
}  // namespace tessary
