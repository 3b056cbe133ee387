#include "library/store_fixture.h"

namespace tessary {
namespace {

class StoreTrash : public StoreTest {
protected:
    TrashedEntry trashedAt(const char* moment, const std::string& audio = {}) {
        TrashedEntry trashed{.entry = page("Gone"), .deletedAt = *parseIso8601(moment)};
        trashed.entry.id = PageId{ids.next()};
        if (!audio.empty()) trashed.entry.audioClips.push_back({.id = ids.next(), .filename = audio, .transcript = {}});
        return trashed;
    }
    bool somewhere(PageId id) const {
        for (const auto& live : recordsIn<JournalEntry>(folders.entries())) {
            if (live.id == id) return true;
        }
        for (const auto& trashed : recordsIn<TrashedEntry>(folders.trash())) {
            if (trashed.entry.id == id) return true;
        }
        return false;
    }
};

TEST_F(StoreTrash, IsPurgedAfterThirtyCalendarDays) {
    // Summer time ends in Berlin on 2026-10-25: thirty days before 10:30 there is 10:30 summer time.
    clock.set(*parseIso8601("2026-11-10T09:30:00Z"));
    const TrashedEntry kept = trashedAt("2026-10-12T08:30:00Z");      // 29 days
    const TrashedEntry edge = trashedAt("2026-10-11T08:30:00Z");      // exactly 30 days by the wall clock
    const TrashedEntry justOver = trashedAt("2026-10-11T08:29:59Z");
    const TrashedEntry over = trashedAt("2026-10-10T09:30:00Z");      // 31 days
    putRecords<TrashedEntry>(folders.trash(), {kept, edge, justOver, over});
    const auto store = open();
    EXPECT_TRUE(store->trash().contains(kept.entry.id));
    EXPECT_TRUE(store->trash().contains(edge.entry.id));
    EXPECT_EQ(store->trash().size(), 2U);
    EXPECT_EQ(recordsIn<TrashedEntry>(folders.trash()).size(), 2U);
    EXPECT_EQ(store->daysLeft(kept), 1);
    EXPECT_EQ(store->daysLeft({.entry = {}, .deletedAt = clock.now()}), 30);
}

TEST_F(StoreTrash, MediaGoOnlyWhenNothingElseUsesThem) {
    TrashedEntry over = trashedAt("2026-01-01", "lone.m4a");
    over.entry.pdfFilename = "live.pdf";
    over.entry.pdfAttachments = {"trashed.pdf", "lone.pdf", "../outside.pdf"};
    TrashedEntry recent = trashedAt("2026-11-20");
    recent.entry.pdfFilename = "trashed.pdf";
    JournalEntry live = page("Live");
    live.id = PageId{ids.next()};
    live.pdfAttachments = {"live.pdf"};
    putRecords<TrashedEntry>(folders.trash(), {over, recent});
    putRecords<JournalEntry>(folders.entries(), {live});
    put(folders.audio() / "lone.m4a", "a");
    for (const char* name : {"live.pdf", "trashed.pdf", "lone.pdf"}) put(folders.pdfs() / name, "p");
    put(folders.base / "outside.pdf", "p");
    open();
    EXPECT_FALSE(exists(files, folders.audio() / "lone.m4a"));
    EXPECT_EQ(names(folders.pdfs(), ""), (std::vector<std::string>{"live.pdf", "trashed.pdf"}));
    EXPECT_TRUE(exists(files, folders.base / "outside.pdf"));
}

TEST_F(StoreTrash, MediaStayWhenAnyFileFailedToLoad) {
    for (const auto& broken : {folders.entries(), folders.notebooks(), folders.exams()}) {
        putRecords<TrashedEntry>(folders.trash(), {trashedAt("2026-01-01", "lone.m4a")});
        put(folders.audio() / "lone.m4a", "a");
        put(broken, "broken");
        EXPECT_TRUE(open()->trash().empty());
        EXPECT_TRUE(exists(files, folders.audio() / "lone.m4a"));
        ASSERT_TRUE(files.remove(broken));
    }
}

TEST_F(StoreTrash, MediaStayWhenTheTrashCannotBeWritten) {
    const auto store = open();
    JournalEntry spoken = page("Spoken");
    spoken.audioClips.push_back({.id = ids.next(), .filename = "lone.m4a", .transcript = {}});
    put(folders.audio() / "lone.m4a", "a");
    ASSERT_TRUE(store->deletePage(*store->addPage(spoken)));
    ASSERT_TRUE(store->flushAndWait());
    files.failAfter(1, FileError::Kind::noSpace);
    EXPECT_EQ(store->emptyTrash(), 1U);
    EXPECT_TRUE(exists(files, folders.audio() / "lone.m4a"));
}

TEST_F(StoreTrash, DeletingTakesAllSubpagesAndRestoringBringsThoseBack) {
    const auto store = open();
    const PageId root = *store->addPage(page("Root"));
    const PageId child = *store->addPage(page("Child", root));
    const PageId leaf = *store->addPage(page("Leaf", child));
    ASSERT_TRUE(store->deletePage(leaf));
    EXPECT_EQ(store->deletePage(root), (std::vector<PageId>{root, child}));
    EXPECT_NE(store->trash().find(leaf)->deletedAt, store->trash().find(root)->deletedAt);
    EXPECT_EQ(store->trash().find(child)->deletedAt, store->trash().find(root)->deletedAt);
    EXPECT_EQ(store->restore(root), (std::vector<PageId>{root, child}));
    EXPECT_EQ(store->entries().find(child)->parentID, root);
    EXPECT_TRUE(store->trash().contains(leaf));
    EXPECT_EQ(recordsIn<JournalEntry>(folders.entries()).size(), 2U);
    EXPECT_EQ(recordsIn<TrashedEntry>(folders.trash()).size(), 1U);
}

TEST_F(StoreTrash, RestoredPagesLoseWhatIsGone) {
    const auto store = open();
    const NotebookId notebook = store->addNotebook("N");
    JournalEntry top = page("Root");
    top.notebookID = notebook;
    const PageId root = *store->addPage(top);
    const PageId child = *store->addPage(page("Child", root));
    ASSERT_TRUE(store->deletePage(child));
    ASSERT_TRUE(store->deleteNotebook(notebook, PagesOfNotebook::goToTrash));
    EXPECT_TRUE(store->entries().empty());
    ASSERT_TRUE(store->restore(child));
    EXPECT_EQ(store->entries().find(child)->notebookID, std::nullopt);
    EXPECT_EQ(store->entries().find(child)->parentID, std::nullopt);
}

TEST_F(StoreTrash, LoopsOfParentsEnd) {
    JournalEntry a = page("A");
    JournalEntry b = page("B");
    a.id = PageId{ids.next()};
    b.id = PageId{ids.next()};
    a.parentID = b.id;
    b.parentID = a.id;
    putRecords<JournalEntry>(folders.entries(), {a, b});
    const auto store = open();
    EXPECT_EQ(store->subpagesOf(a.id), std::vector<PageId>{b.id});
    EXPECT_FALSE(store->setParent(a.id, b.id));
    EXPECT_EQ(store->deletePage(a.id)->size(), 2U);
    EXPECT_EQ(store->restore(b.id)->size(), 2U);
}

TEST_F(StoreTrash, APageIsInOneFileAtLeastWhereverWritingStops) {
    for (int step = 1; step <= 16; ++step) {
        SCOPED_TRACE(step);
        for (const auto& path : {folders.entries(), folders.trash()}) put(path, "[]");
        const auto store = open();
        const PageId deleted = *store->addPage(page("Deleted"));
        const PageId restored = *store->addPage(page("Restored"));
        ASSERT_TRUE(store->deletePage(restored));
        ASSERT_TRUE(store->flushAndWait());
        files.failAfter(step, FileError::Kind::noSpace);
        ASSERT_TRUE(store->restore(restored));
        EXPECT_TRUE(somewhere(restored));
        ASSERT_TRUE(store->deletePage(deleted));
        loop.advance(1);
        EXPECT_TRUE(somewhere(deleted));
        EXPECT_TRUE(somewhere(restored));
        files.stopFailing();
        EXPECT_TRUE(store->flushAndWait());
        EXPECT_EQ(recordsIn<JournalEntry>(folders.entries()).size(), 1U);
        EXPECT_EQ(recordsIn<TrashedEntry>(folders.trash()).size(), 1U);
    }
}

TEST_F(StoreTrash, APageThatIsAlsoLiveLeavesTheTrash) {
    JournalEntry same = page("Same");
    same.id = PageId{ids.next()};
    putRecords<JournalEntry>(folders.entries(), {same});
    putRecords<TrashedEntry>(folders.trash(), {{.entry = same, .deletedAt = clock.now()}});
    EXPECT_TRUE(open()->trash().empty());
    EXPECT_TRUE(recordsIn<TrashedEntry>(folders.trash()).empty());
}

}  // namespace
}  // namespace tessary
