#pragma once

#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/signal.h"
#include "library/delayed_save.h"
#include "library/json_file.h"
#include "library/library_folders.h"
#include "library/library_json.h"
#include "library/listing.h"
#include "library/pages_in_transit.h"
#include "library/record_list.h"
#include "library/store_services.h"

namespace tessary {

template <>
[[nodiscard]] inline const auto& identityOf(const TrashedEntry& trashed) {
    return trashed.entry.id;
}

/// What a change of the library touched, so that views refresh just that.
struct LibraryChange {
    std::vector<PageId> pages;  ///< added, changed or removed
    std::vector<NotebookId> notebooks;
    std::vector<ExamId> exams;
    bool trash = false;
};

/// A sentence for the user that says why an operation was not done; nothing has changed then.
using Refusal = std::string;

enum class MediaKind { image, audio, pdf, cover };

enum class PagesOfNotebook { becomeLoose, goToTrash };

enum class SortOrder { newest, oldest };

/// The single owner of the user's library: pages, notebooks, the trash and exams. Main thread only.
///
/// A change of the pages is written half a second after the last one; a change of notebooks, trash or exams at once,
/// each file whole, on the serial queue. `NtoFlushStore` writes everything pending.
class JournalStore {
public:
    /// Loads all files. With `readWrite` access it also purges the trash, removes left-overs of a crash, and has the
    /// queue make the backups: the caller holds the library's lock.
    /// `queue` is the store's own ("com.vorlek.Notara.save"); it outlives the store.
    JournalStore(LibraryFolders folders, StoreServices services, SerialQueue& queue, StoreAccess access);
    ~JournalStore();
    JournalStore(const JournalStore&) = delete;
    JournalStore& operator=(const JournalStore&) = delete;

    static constexpr int kTrashDays = 30;
    static constexpr double kSaveDelay = 0.5;  ///< seconds
    static constexpr std::size_t kRollingBackups = 20;
    static constexpr int kDailyBackupDays = 14;

    Signal<LibraryChange> changed;

    [[nodiscard]] const RecordList<JournalEntry>& entries() const { return entries_; }
    [[nodiscard]] const RecordList<Notebook>& notebooks() const { return notebooks_; }
    [[nodiscard]] const RecordList<TrashedEntry>& trash() const { return trash_; }
    [[nodiscard]] const RecordList<Exam>& exams() const { return exams_; }
    [[nodiscard]] const LibraryFolders& folders() const { return folders_; }
    [[nodiscard]] StoreAccess access() const { return access_; }

    /// One line for each file that could not be read at load; empty when all were.
    [[nodiscard]] std::vector<std::string> loadProblems() const;

    // ---- pages ----

    /// Fills `id` and `date` when they are unset (all zero). A page put under a parent takes the parent's notebook.
    /// Refused: an unknown notebook or parent, an identity that is already there.
    std::expected<PageId, Refusal> addPage(JournalEntry page);
    /// Replaces the page of the same identity and sets `updatedAt` to now. Notebook and parent are only changed
    /// through `movePage` and `setParent`: what `page` says of them is passed over.
    std::expected<void, Refusal> updatePage(JournalEntry page);
    /// Moves the page with its subpages to a notebook, or to the loose pages; it becomes a top-level page there.
    std::expected<void, Refusal> movePage(PageId page, std::optional<NotebookId> notebook);
    /// Makes the page, with its subpages, a subpage of `parent` and brings it into its notebook; without a parent it
    /// becomes a top-level page of its notebook. Refused when the page would stand inside itself.
    std::expected<void, Refusal> setParent(PageId page, std::optional<PageId> parent);
    /// Moves the page and all its subpages to the trash under one `deletedAt`. Gives what went, the page first.
    std::expected<std::vector<PageId>, Refusal> deletePage(PageId page);

    /// The page's subpages at every depth, parents before children, the page itself not included. Ends in spite of
    /// loops of `parentID`.
    [[nodiscard]] std::vector<PageId> subpagesOf(PageId page) const;

    // ---- trash ----

    /// Brings back the page and those of its subpages that went with it. It becomes loose when its notebook is gone and
    /// a top-level page when its parent is. Gives what came back, the page first.
    std::expected<std::vector<PageId>, Refusal> restore(PageId page);
    /// Deletes for good everything in the trash, and the media only it used. Gives the number of pages.
    std::size_t emptyTrash();
    /// Whole days until the page is deleted for good, at least 1.
    [[nodiscard]] int daysLeft(const TrashedEntry& trashed) const;

    // ---- notebooks ----

    /// Fills `id` and `createdAt` when they are unset; an empty name becomes "Untitled Notebook".
    NotebookId addNotebook(Notebook notebook);
    NotebookId addNotebook(std::string name);
    std::expected<void, Refusal> updateNotebook(Notebook notebook);
    std::expected<void, Refusal> renameNotebook(NotebookId notebook, std::string name);
    /// With its exams, whatever becomes of the pages: an exam without its notebook would show nowhere.
    std::expected<void, Refusal> deleteNotebook(NotebookId notebook, PagesOfNotebook pages);

    // ---- exams ----

    std::expected<ExamId, Refusal> addExam(Exam exam);
    std::expected<void, Refusal> updateExam(Exam exam);
    std::expected<void, Refusal> deleteExam(ExamId exam);

    // ---- media ----

    /// Copies a file into the library under a free plain name close to its own, at most 255 bytes of UTF-8, and gives
    /// that name. Does not tie it to a page. A file of the same name and content is taken as it is.
    std::expected<std::string, Refusal> addMedia(MediaKind kind, const std::filesystem::path& source);
    [[nodiscard]] std::filesystem::path mediaFolder(MediaKind kind) const;

    // ---- listing ----

    [[nodiscard]] EntrySortMode sortMode() const;  ///< `created` unless set
    [[nodiscard]] SortOrder sortOrder() const;  ///< `newest` unless set
    [[nodiscard]] std::vector<PageId> pinnedPages() const;
    std::expected<void, Refusal> setPinned(PageId page, bool pinned);
    [[nodiscard]] std::map<std::string, std::string> tagColors() const;  ///< colour hex by tag
    std::expected<void, Refusal> setTagColor(const std::string& tag, std::optional<std::string> colorHex);
    /// Pinned pages first, then by `sortMode` and `sortOrder` (titles run from A to Z under `newest`). `folded` gives
    /// the comparable form of a title.
    void sortForListing(std::vector<const JournalEntry*>& pages,
                        const std::function<std::string(std::string_view)>& folded) const;

    // ---- saving ----

    /// Queues every pending write.
    void flush();
    /// Flushes and waits. An error names each file that could not be written, for the user.
    std::expected<void, Refusal> flushAndWait();

private:
    void load();
    void makeBackups();
    void dropRestoredFromTrash();
    void purgeTrash();
    [[nodiscard]] bool allLoaded() const;

    void saveEntries();
    void saveTrash(std::move_only_function<bool()> mayWrite = {}, std::move_only_function<void()> written = {});
    void saveNotebooks();
    void saveExams();
    /// Writes the trash without what is no longer in it, then removes the media that only `dropped` used.
    void saveTrashAndRemoveMedia(const RecordList<TrashedEntry>::Snapshot& dropped);
    void pagesChanged(std::vector<PageId> pages);

    [[nodiscard]] Date freshDeletionDate() const;
    /// Moves pages, given in the order they get in the trash, out of the live ones under one `deletedAt`.
    void moveToTrash(const std::vector<PageId>& pages);
    [[nodiscard]] RecordList<TrashedEntry>::Snapshot trashedTogether(const TrashedEntry& root) const;
    [[nodiscard]] std::optional<std::string> refusalOf(const JournalEntry& page) const;
    [[nodiscard]] std::vector<PageId> pagesIn(NotebookId notebook) const;
    void setNotebook(const std::vector<PageId>& pages, std::optional<NotebookId> notebook);

    LibraryFolders folders_;
    StoreServices services_;
    SerialQueue& queue_;
    StoreAccess access_;
    JsonFile<RecordList<JournalEntry>::Snapshot> entriesFile_;
    JsonFile<RecordList<Notebook>::Snapshot> notebooksFile_;
    JsonFile<RecordList<TrashedEntry>::Snapshot> trashFile_;
    JsonFile<RecordList<Exam>::Snapshot> examsFile_;
    RecordList<JournalEntry> entries_;
    RecordList<Notebook> notebooks_;
    RecordList<TrashedEntry> trash_;
    RecordList<Exam> exams_;
    std::shared_ptr<PagesInTransit> inTransit_;
    DelayedSave entriesSave_;
    Subscription flushObserver_;
};

}  // namespace tessary
