#include "library/store_fixture.h"
#include "platform/adapters/threads/event_loop.h"
#include "platform/adapters/threads/thread_queue.h"

namespace tessary {
namespace {

using Names = MemoryFileSystem::UnsyncedNames;

class StorePages : public StoreTest {
protected:
    static JournalEntry pageIn(NotebookId notebook, const std::string& title) {
        JournalEntry made = page(title);
        made.notebookID = notebook;
        return made;
    }
};

TEST_F(StorePages, AddingFillsWhatIsUnsetAndRefusesWhatLeadsNowhere) {
    const auto store = open();
    const NotebookId notebook = store->addNotebook("N");
    const PageId root = *store->addPage(pageIn(notebook, "Root"));
    EXPECT_EQ(store->entries().find(root)->date, clock.now());
    const PageId child = *store->addPage(page("Child", root));
    EXPECT_EQ(store->entries().find(child)->notebookID, notebook);
    ASSERT_TRUE(store->deletePage(child));
    JournalEntry again = page("Again");
    again.id = root;
    JournalEntry trashed = page("Trashed");
    trashed.id = child;
    for (const JournalEntry& refused :
         {page("Lost", PageId{ids.next()}), pageIn(NotebookId{ids.next()}, "Lost"), again, trashed}) {
        EXPECT_FALSE(store->addPage(refused)) << refused.title;
    }
    EXPECT_EQ(store->entries().size(), 1U);
}

TEST_F(StorePages, UpdatingKeepsThePlaceAndMarksTheEdit) {
    const auto store = open();
    const NotebookId notebook = store->addNotebook("N");
    const PageId root = *store->addPage(pageIn(notebook, "Root"));
    clock.advance(60);
    JournalEntry edited = page("Edited", root);
    EXPECT_FALSE(store->updatePage(edited));
    edited.id = root;
    ASSERT_TRUE(store->updatePage(edited));
    const JournalEntry& present = *store->entries().find(root);
    EXPECT_EQ(present.title, "Edited");
    EXPECT_EQ(present.updatedAt, clock.now());
    EXPECT_EQ(present.notebookID, notebook);
    EXPECT_EQ(present.parentID, std::nullopt);
}

TEST_F(StorePages, MovingTakesTheSubpagesAlong) {
    const auto store = open();
    const NotebookId from = store->addNotebook("From");
    const NotebookId to = store->addNotebook("To");
    const PageId top = *store->addPage(pageIn(from, "Top"));
    const PageId root = *store->addPage(page("Root", top));
    const PageId leaf = *store->addPage(page("Leaf", root));
    std::vector<PageId> told;
    const Subscription changes = store->changed.connect([&](const LibraryChange& change) { told = change.pages; });
    EXPECT_FALSE(store->movePage(root, NotebookId{ids.next()}));
    EXPECT_FALSE(store->movePage(PageId{ids.next()}, to));
    EXPECT_TRUE(told.empty());
    for (const std::optional<NotebookId>& target : {std::optional(to), std::optional<NotebookId>()}) {
        ASSERT_TRUE(store->movePage(root, target));
        EXPECT_EQ(told, (std::vector{root, leaf}));
        EXPECT_EQ(store->entries().find(root)->notebookID, target);
        EXPECT_EQ(store->entries().find(root)->parentID, std::nullopt);
        EXPECT_EQ(store->entries().find(leaf)->notebookID, target);
        EXPECT_EQ(store->entries().find(leaf)->parentID, root);
        EXPECT_EQ(store->entries().find(top)->notebookID, from);
    }
}

TEST_F(StorePages, AParentGivesItsNotebookAndStandsNotInsideThePage) {
    const auto store = open();
    const NotebookId notebook = store->addNotebook("N");
    const PageId parent = *store->addPage(pageIn(notebook, "Parent"));
    const PageId root = *store->addPage(page("Root"));
    const PageId leaf = *store->addPage(page("Leaf", root));
    ASSERT_TRUE(store->setParent(root, parent));
    EXPECT_EQ(store->subpagesOf(parent), (std::vector{root, leaf}));
    EXPECT_EQ(store->entries().find(leaf)->notebookID, notebook);
    for (const PageId& inside : {root, leaf, PageId{ids.next()}}) EXPECT_FALSE(store->setParent(root, inside));
    EXPECT_FALSE(store->setParent(parent, leaf));
    EXPECT_FALSE(store->setParent(PageId{ids.next()}, parent));
    EXPECT_EQ(store->entries().find(root)->parentID, parent);
    ASSERT_TRUE(store->setParent(root, std::nullopt));
    EXPECT_EQ(store->entries().find(root)->parentID, std::nullopt);
    EXPECT_EQ(store->entries().find(root)->notebookID, notebook);
}

TEST_F(StorePages, ARestoredSubpageGoesUnderItsParentOnlyWhileThatLives) {
    const auto store = open();
    const NotebookId first = store->addNotebook("First");
    const NotebookId second = store->addNotebook("Second");
    const PageId root = *store->addPage(pageIn(first, "Root"));
    const PageId child = *store->addPage(page("Child", root));
    ASSERT_TRUE(store->deletePage(child));
    ASSERT_TRUE(store->movePage(root, second));
    ASSERT_TRUE(store->restore(child));
    EXPECT_EQ(store->entries().find(child)->parentID, root);
    EXPECT_EQ(store->entries().find(child)->notebookID, second);
    EXPECT_FALSE(store->restore(child));
    ASSERT_TRUE(store->deletePage(child));
    ASSERT_TRUE(store->deletePage(root));
    ASSERT_TRUE(store->restore(child));
    EXPECT_EQ(store->entries().find(child)->parentID, std::nullopt);
    EXPECT_EQ(store->entries().find(child)->notebookID, second);
    EXPECT_TRUE(store->trash().contains(root));
}

TEST_F(StorePages, APageOnItsWayTwiceIsKeptAsItWasTheLastTime) {
    const auto store = open();
    const PageId id = *store->addPage(page("Old"));
    ASSERT_TRUE(store->flushAndWait());
    files.failAfter(1, FileError::Kind::other);
    ASSERT_TRUE(store->deletePage(id));
    ASSERT_TRUE(store->restore(id));
    JournalEntry edited = *store->entries().find(id);
    edited.title = "New";
    ASSERT_TRUE(store->updatePage(edited));
    ASSERT_TRUE(store->deletePage(id));
    files.stopFailing();
    loop.advance(1);  // writes the live pages before the trash has the page
    EXPECT_EQ(recordsIn<JournalEntry>(folders.entries()).at(0).title, "New");
    ASSERT_TRUE(store->flushAndWait());
    EXPECT_EQ(recordsIn<TrashedEntry>(folders.trash()).at(0).entry.title, "New");
    EXPECT_TRUE(recordsIn<JournalEntry>(folders.entries()).empty());
}

TEST_F(StorePages, ADeepTreeGoesAndComesBackWhole) {
    constexpr std::size_t kPages = 5000;
    std::vector<JournalEntry> chain(kPages, page("Page"));
    for (JournalEntry& each : chain) each.id = PageId{ids.next()};
    for (std::size_t i = 0; i + 1 < kPages; ++i) chain[i].parentID = chain[i + 1].id;  // the innermost page comes first
    putRecords(folders.entries(), chain);
    const auto store = open();
    const PageId root = chain.back().id;
    EXPECT_EQ(store->deletePage(root)->size(), kPages);
    EXPECT_EQ(store->restore(root)->size(), kPages);
    EXPECT_EQ(store->subpagesOf(root).size(), kPages - 1);
    EXPECT_EQ(recordsIn<JournalEntry>(folders.entries()).size(), kPages);
}

/// One edit of a saved page, made to fail from `step` on; false when it came to its end before that.
bool saveFails(int step, Names names, StoreServices services, MemoryFileSystem& files, const LibraryFolders& folders) {
    InlineQueue queue;
    bool failed = false;
    {
        JournalStore store(folders, services, queue, StoreAccess::readWrite);
        JournalEntry first;
        first.title = "Old";
        JournalEntry edited = *store.entries().find(*store.addPage(first));
        EXPECT_TRUE(store.flushAndWait());
        edited.title = "New";
        EXPECT_TRUE(store.updatePage(edited));
        files.failAfter(step, FileError::Kind::other);
        failed = !store.flushAndWait();
    }
    files.crash(names);
    const JournalStore store(folders, services, queue, StoreAccess::readWrite);
    EXPECT_TRUE(store.loadProblems().empty());
    EXPECT_EQ(store.entries().size(), 1U);
    const std::string title = store.entries().empty() ? "" : store.entries()[0].title;
    EXPECT_TRUE(title == "New" || (failed && title == "Old")) << title;
    return failed;
}

TEST_F(StorePages, ACrashWhileSavingLeavesTheOldOrTheNewFile) {
    for (const Names names : {Names::lost, Names::kept}) {
        int step = 1;
        for (bool failed = true; failed; ++step) {
            SCOPED_TRACE(step);
            const LibraryFolders own{"/library" + std::to_string(step) + (names == Names::lost ? "l" : "k")};
            ASSERT_TRUE(files.createFolders(own.base));
            failed = saveFails(step, names, services(), files, own);
        }
        EXPECT_GT(step, 5);
    }
}

TEST_F(StorePages, NothingIsLostBetweenTheThreads) {
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE(round);
        const LibraryFolders own{"/threads" + std::to_string(round)};
        EventLoop realLoop;
        ThreadQueue realQueue("save");
        const StoreServices real{files, realLoop, clock, calendar, ids, settings, console, notifications};
        std::vector<JournalEntry> expected;
        {
            JournalStore store(own, real, realQueue, StoreAccess::readWrite);
            const PageId root = *store.addPage(page("Root"));
            for (int edit = 0; edit < 50; ++edit) {
                ASSERT_TRUE(store.addPage(page("Child " + std::to_string(edit), root)));
                JournalEntry edited = *store.entries().find(root);
                edited.title = std::to_string(edit);
                ASSERT_TRUE(store.updatePage(edited));
                if (edit % 7 == round % 7) notifications.post(kNtoFlushStore);
                if (edit % 11 == 0) {
                    ASSERT_TRUE(store.deletePage(store.entries()[store.entries().size() - 1].id));
                }
                if (edit % 22 == 0) {
                    ASSERT_TRUE(store.restore(store.trash()[0].entry.id));
                }
                if (edit % 25 == 0) {
                    ASSERT_TRUE(store.flushAndWait());
                }
                realLoop.runReady();
            }
            for (const JournalEntry& each : store.entries()) expected.push_back(each);
        }
        const JournalStore store(own, services(), queue, StoreAccess::readOnly);
        EXPECT_EQ(std::vector<JournalEntry>(store.entries().begin(), store.entries().end()), expected);
        EXPECT_FALSE(store.trash().empty());
    }
    EXPECT_TRUE(console.lines().empty());
}

}  // namespace
}  // namespace tessary
