#include "library/journal_store.h"

#include <set>
#include <unordered_map>
#include <unordered_set>

#include "base/text.h"
#include "library/library_backups.h"
#include "platform/atomic_write.h"

namespace tessary {

namespace fs = std::filesystem;

namespace {

struct MediaNames {
    std::set<std::string> audio;
    std::set<std::string> pdfs;

    void add(const JournalEntry& page) {
        for (const AudioClip& clip : page.audioClips) audio.insert(clip.filename);
        pdfs.insert(page.pdfAttachments.begin(), page.pdfAttachments.end());
        if (page.pdfFilename) pdfs.insert(*page.pdfFilename);
    }
};

void addUnused(std::vector<fs::path>& paths, const fs::path& folder, const std::set<std::string>& names,
               const std::set<std::string>& used) {
    for (const std::string& name : names) {
        if (isPlainFileName(name) && !used.contains(name)) paths.push_back(folder / name);
    }
}

void removeMedia(FileSystem& files, Console& console, const std::vector<fs::path>& paths) {
    for (const fs::path& path : paths) {
        const FileResult<void> removed = files.remove(path);
        if (removed || removed.error().kind == FileError::Kind::notFound) continue;
        console.print("Notara: media could not be removed — " + removed.error().message);
    }
}

}  // namespace

JournalStore::JournalStore(LibraryFolders folders, StoreServices services, SerialQueue& queue, StoreAccess access)
    : folders_(std::move(folders)),
      services_(services),
      queue_(queue),
      access_(access),
      entriesFile_(folders_.entries(), "Notara: save failed — ", services, queue, access),
      notebooksFile_(folders_.notebooks(), "Notara: notebooks save failed — ", services, queue, access),
      trashFile_(folders_.trash(), "Notara: trash save failed — ", services, queue, access),
      examsFile_(folders_.exams(), "Notara: exams save failed — ", services, queue, access),
      inTransit_(std::make_shared<PagesInTransit>()),
      entriesSave_(services.loop, kSaveDelay, [this] { saveEntries(); }) {
    load();
    flushObserver_ = services_.notifications.observe(kNtoFlushStore, [this] { flush(); });
}

JournalStore::~JournalStore() {
    entriesSave_.flush();
    queue_.drain();
}

void JournalStore::load() {
    entries_ = RecordList<JournalEntry>(entriesFile_.load());
    if (access_ == StoreAccess::readWrite) makeBackups();
    notebooks_ = RecordList<Notebook>(notebooksFile_.load());
    trash_ = RecordList<TrashedEntry>(trashFile_.load());
    exams_ = RecordList<Exam>(examsFile_.load());
    dropRestoredFromTrash();
    if (access_ == StoreAccess::readWrite) purgeTrash();
}

void JournalStore::makeBackups() {
    removeStaleTemporaries(services_.files, folders_.base);
    // What cannot be read has its own copy and must not push out good ones, start by start.
    if (entriesFile_.outcome() != LoadOutcome::loaded) return;
    // Before any save on the same queue, so it is the file as it was found; the start does not wait for the disk.
    queue_.post([folders = folders_, services = services_] {
        makeRollingBackup(folders, services, kRollingBackups);
        makeDailyBackup(folders, services, kDailyBackupDays);
    });
}

void JournalStore::dropRestoredFromTrash() {
    const auto dropped = trash_.extractIf([&](const TrashedEntry& trashed) {
        const JournalEntry* const live = entries_.find(trashed.entry.id);
        return live != nullptr && *live == trashed.entry;
    });
    if (!dropped.empty()) saveTrash();
}

void JournalStore::purgeTrash() {
    const Date limit = services_.calendar.addingDays(services_.clock.now(), -kTrashDays);
    const auto dropped = trash_.extractIf([&](const TrashedEntry& trashed) { return trashed.deletedAt < limit; });
    if (!dropped.empty()) saveTrashAndRemoveMedia(dropped);
}

bool JournalStore::allLoaded() const { return loadProblems().empty(); }

std::vector<std::string> JournalStore::loadProblems() const {
    std::vector<std::string> problems;
    for (const GuardedFile* file :
         {static_cast<const GuardedFile*>(&entriesFile_), static_cast<const GuardedFile*>(&notebooksFile_),
          static_cast<const GuardedFile*>(&trashFile_), static_cast<const GuardedFile*>(&examsFile_)}) {
        if (!file->loadProblem().empty()) problems.push_back(file->loadProblem());
    }
    return problems;
}

void JournalStore::saveEntries() {
    const PagesInTransit::Ticket ticket = inTransit_->ticket();
    entriesFile_.save(
        [pages = entries_.snapshot(), transit = inTransit_]() mutable {
            transit->complete(pages);
            return encodeJson(pages);
        },
        {}, [transit = inTransit_, ticket] { transit->liveWritten(ticket); });
}

void JournalStore::saveTrash(std::move_only_function<bool()> mayWrite, std::move_only_function<void()> written) {
    const PagesInTransit::Ticket ticket = inTransit_->ticket();
    trashFile_.save(
        [trashed = trash_.snapshot(), transit = inTransit_]() mutable {
            transit->complete(trashed);
            return encodeJson(trashed);
        },
        std::move(mayWrite),
        [transit = inTransit_, ticket, written = std::move(written)]() mutable {
            transit->trashWritten(ticket);
            if (written) written();
        });
}

void JournalStore::saveNotebooks() { notebooksFile_.saveRoot(notebooks_.snapshot()); }

void JournalStore::saveExams() { examsFile_.saveRoot(exams_.snapshot()); }

void JournalStore::saveTrashAndRemoveMedia(const RecordList<TrashedEntry>::Snapshot& dropped) {
    std::vector<fs::path> unused;
    if (allLoaded()) {
        MediaNames used;
        for (const JournalEntry& page : entries_) used.add(page);
        for (const TrashedEntry& trashed : trash_) used.add(trashed.entry);
        MediaNames gone;
        for (const auto& trashed : dropped) gone.add(trashed->entry);
        addUnused(unused, folders_.audio(), gone.audio, used.audio);
        addUnused(unused, folders_.pdfs(), gone.pdfs, used.pdfs);
    }
    saveTrash({}, [unused = std::move(unused), &files = services_.files, &console = services_.console] {
        removeMedia(files, console, unused);
    });
}

void JournalStore::flush() {
    entriesSave_.flush();
    if (entriesFile_.lastSaveFailed() || trashFile_.lastSaveFailed()) {
        saveTrash();    // keeps what the live pages' file does not have yet
        saveEntries();  // keeps what the trash's file does not have yet
        saveTrash();
    }
    if (notebooksFile_.lastSaveFailed()) saveNotebooks();
    if (examsFile_.lastSaveFailed()) saveExams();
}

std::expected<void, Refusal> JournalStore::flushAndWait() {
    flush();
    queue_.drain();
    std::vector<std::string> errors;
    for (const GuardedFile* file :
         {static_cast<const GuardedFile*>(&entriesFile_), static_cast<const GuardedFile*>(&notebooksFile_),
          static_cast<const GuardedFile*>(&trashFile_), static_cast<const GuardedFile*>(&examsFile_)}) {
        const std::string error = file->lastSaveError();
        if (!error.empty()) errors.push_back(file->name() + " could not be saved: " + error);
    }
    if (errors.empty()) return {};
    return std::unexpected(joined(errors, "\n"));
}

void JournalStore::pagesChanged(std::vector<PageId> pages) {
    entriesSave_.schedule();
    LibraryChange change;
    change.pages = std::move(pages);
    changed.emit(change);
}

}  // namespace tessary
