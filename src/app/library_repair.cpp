#include "app/library_repair.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "app/library_content.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kRecoveredTitle = "Recovered cards";

void setIdentity(JournalEntry& page, Uuid id) { page.id = PageId{id}; }
void setIdentity(TrashedEntry& trashed, Uuid id) { trashed.entry.id = PageId{id}; }
void setIdentity(Notebook& notebook, Uuid id) { notebook.id = NotebookId{id}; }
void setIdentity(Exam& exam, Uuid id) { exam.id = ExamId{id}; }
void setIdentity(Flashcard& card, Uuid id) { card.id = CardId{id}; }

/// Mends the records in memory, in an order in which no step undoes an earlier one.
class Mending {
public:
    Mending(LibraryContent& library, const LibraryFolders& folders, const StoreServices& services)
        : library_(library), folders_(folders), services_(services), pages_(library.pages.records) {}

    void run() {
        separateTrashFromLive();
        separate(library_.pages.records, "page", folders_.entries());
        separate(library_.trash.records, "page", folders_.trash());
        separate(library_.notebooks.records, "notebook", folders_.notebooks());
        separate(library_.exams.records, "exam", folders_.exams());
        separate(library_.cards.records, "card", folders_.flashcards());
        freeFromMissingParents();
        openLoops();
        freeFromMissingNotebooks();
        joinNotebooksOfParents();
        if (canRecoverCards(library_)) recoverCards();
    }

    [[nodiscard]] std::vector<std::string>& done() { return done_; }
    [[nodiscard]] bool hasChanged(const fs::path& file) const { return changed_.contains(file); }

private:
    void note(const fs::path& file, std::string sentence) {
        changed_.insert(file);
        done_.push_back(std::move(sentence));
    }

    template <class T>
    typename RecordList<T>::Pointer withFreshIdentity(T record, std::string_view thing, const fs::path& file) {
        const std::string name = nameOf(record);
        setIdentity(record, services_.ids.next());
        note(file, "The " + std::string(thing) + " " + name + " got an identity of its own, " +
                       identityOf(record).toString() + ".");
        return std::make_shared<const T>(std::move(record));
    }

    void separateTrashFromLive() {
        typename RecordList<TrashedEntry>::Snapshot kept;
        for (const auto& trashed : library_.trash.records.snapshot()) {
            const JournalEntry* const live = pages_.find(trashed->entry.id);
            if (live == nullptr) {
                kept.push_back(trashed);
            } else if (*live != trashed->entry) {
                kept.push_back(withFreshIdentity(*trashed, "page", folders_.trash()));
            } else {
                note(folders_.trash(), "The page " + nameOf(*trashed) + " is in the library; its copy left the trash.");
            }
        }
        if (hasChanged(folders_.trash())) library_.trash.records = RecordList<TrashedEntry>(std::move(kept));
    }

    template <class T>
    void separate(RecordList<T>& records, std::string_view thing, const fs::path& file) {
        const std::vector<Duplicate> duplicates = duplicatesIn(records);
        if (duplicates.empty()) return;
        typename RecordList<T>::Snapshot kept;
        auto next = duplicates.begin();
        for (std::size_t i = 0; i < records.size(); ++i) {
            const bool isDuplicate = next != duplicates.end() && next->index == i;
            const bool isIdentical = isDuplicate && next->isIdentical;
            if (isDuplicate) ++next;
            if (!isDuplicate) {
                kept.push_back(records.snapshot()[i]);
            } else if (!isIdentical) {
                kept.push_back(withFreshIdentity(records[i], thing, file));
            } else {
                note(file, "The " + std::string(thing) + " " + nameOf(records[i]) + " stands there only once now.");
            }
        }
        records = RecordList<T>(std::move(kept));
    }

    /// `change` edits a copy of the page, which then takes its place.
    template <class Change>
    void changePage(const PageId& id, std::string_view outcome, Change change) {
        JournalEntry page = *pages_.find(id);
        change(page);
        note(folders_.entries(), "The page " + nameOf(page) + std::string(outcome));
        pages_.replace(std::move(page));
    }

    template <class Condition>
    [[nodiscard]] std::vector<PageId> pagesWhere(Condition condition) const {
        std::vector<PageId> found;
        for (const JournalEntry& page : pages_) {
            if (condition(page)) found.push_back(page.id);
        }
        return found;
    }

    void makeTopLevel(const PageId& id) {
        changePage(id, " is a top-level page now.", [](JournalEntry& page) { page.parentID.reset(); });
    }

    void freeFromMissingParents() {
        const auto isAlone = [&](const JournalEntry& page) { return page.parentID && !parentOf(page, pages_); };
        for (const PageId& page : pagesWhere(isAlone)) makeTopLevel(page);
    }

    void openLoops() {
        std::vector<PageId> tops;
        for (const ParentLoop& loop : parentLoops(pages_)) {
            tops.push_back((*std::ranges::min_element(loop, {}, &JournalEntry::date))->id);
        }
        for (const PageId& page : tops) makeTopLevel(page);
    }

    void freeFromMissingNotebooks() {
        if (library_.notebooks.state != LibraryContent::State::loaded) return;
        const RecordList<Notebook>& notebooks = library_.notebooks.records;
        const auto isAlone = [&](const JournalEntry& page) {
            return page.notebookID && !notebooks.contains(*page.notebookID);
        };
        for (const PageId& id : pagesWhere(isAlone)) {
            changePage(id, " is a loose page now.", [](JournalEntry& page) { page.notebookID.reset(); });
        }
    }

    void joinNotebooksOfParents() {
        const auto notebooks = notebooksOfTopLevelPages();
        const auto isElsewhere = [&](const JournalEntry& page) { return page.notebookID != notebooks.at(page.id); };
        for (const PageId& id : pagesWhere(isElsewhere)) {
            changePage(id, " is in the notebook of its parent now.",
                       [&](JournalEntry& page) { page.notebookID = notebooks.at(id); });
        }
    }

    /// For each page the notebook of the top-level page it stands under. There are no loops any more.
    [[nodiscard]] std::unordered_map<PageId, std::optional<NotebookId>> notebooksOfTopLevelPages() const {
        std::unordered_map<PageId, std::optional<NotebookId>> notebooks;
        for (const JournalEntry& start : pages_) {
            std::vector<const JournalEntry*> way;
            const JournalEntry* page = &start;
            while (page != nullptr && !notebooks.contains(page->id)) {
                way.push_back(page);
                page = parentOf(*page, pages_);
            }
            if (way.empty()) continue;
            const std::optional<NotebookId> notebook =
                page == nullptr ? way.back()->notebookID : notebooks.at(page->id);
            for (const JournalEntry* const each : way) notebooks.emplace(each->id, notebook);
        }
        return notebooks;
    }

    void recoverCards() {
        for (const auto& [id, count] : cardsWithoutPage(library_)) {
            JournalEntry page;
            page.id = id;
            page.title = kRecoveredTitle;
            page.date = services_.clock.now();
            note(folders_.entries(), "The page " + nameOf(page) + " was made for " + countOf(count, "card") + ".");
            pages_.append(std::move(page));
        }
    }

    LibraryContent& library_;
    const LibraryFolders& folders_;
    const StoreServices& services_;
    RecordList<JournalEntry>& pages_;
    std::set<fs::path> changed_;
    std::vector<std::string> done_;
};

// ---- writing ----

struct NewContent {
    fs::path file;
    std::expected<std::string, std::string> content;
};

std::vector<NewContent> newContents(const LibraryContent& library, const LibraryFolders& folders,
                                    const Mending& mending) {
    std::vector<NewContent> contents;
    const auto add = [&](const fs::path& file, const auto& root) {
        if (mending.hasChanged(file)) contents.push_back({file, encodeJson(root)});
    };
    add(folders.entries(), library.pages.records.snapshot());
    add(folders.trash(), library.trash.records.snapshot());
    add(folders.notebooks(), library.notebooks.records.snapshot());
    add(folders.exams(), library.exams.records.snapshot());
    FlashcardFile cards = library.cardFile;
    cards.cards = library.cards.records.snapshot();
    add(folders.flashcards(), cards);
    return contents;
}

std::unexpected<std::string> failed(const fs::path& file, const std::string& why) {
    return std::unexpected(file.filename().string() + " could not be repaired: " + why);
}

FileResult<void> keepCopy(const fs::path& file, const LibraryFolders& folders, const StoreServices& services) {
    if (FileResult<void> made = services.files.createFolders(folders.backups()); !made) return made;
    const std::string name =
        file.stem().string() + "-before-repair-" + timeStamp(services.calendar.civilTime(services.clock.now()));
    fs::path copy = folders.backups() / (name + ".json");
    for (int number = 2; exists(services.files, copy); ++number) {
        copy = folders.backups() / (name + "-" + std::to_string(number) + ".json");
    }
    return copyFile(services.files, file, copy);
}

/// All copies are made before the first file changes.
std::expected<void, std::string> write(const std::vector<NewContent>& contents, const LibraryFolders& folders,
                                       const StoreServices& services) {
    for (const NewContent& changed : contents) {
        if (!changed.content) return failed(changed.file, changed.content.error());
        const FileResult<void> copied = keepCopy(changed.file, folders, services);
        if (!copied) return failed(changed.file, copied.error().message);
    }
    for (const NewContent& changed : contents) {
        const FileResult<void> written = writeAtomically(services.files, changed.file, *changed.content);
        if (!written) return failed(changed.file, written.error().message);
    }
    return {};
}

}  // namespace

std::expected<RepairReport, std::string> repairLibrary(const LibraryFolders& folders, const StoreServices& services) {
    const ReadContext context{.now = services.clock.now(), .freshId = [&ids = services.ids] { return ids.next(); }};
    LibraryContent library = loadLibrary(folders, services.files, context);
    Mending mending(library, folders, services);
    mending.run();
    if (const auto written = write(newContents(library, folders, mending), folders, services); !written) {
        return std::unexpected(written.error());
    }
    return RepairReport{.done = std::move(mending.done()), .remaining = checkLibrary(folders, services.files, context)};
}

}  // namespace tessary
