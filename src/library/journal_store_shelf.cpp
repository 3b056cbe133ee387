#include "library/journal_store.h"

#include <unordered_set>

#include "base/text.h"
#include "library/journal_store_tree.h"
#include "platform/atomic_write.h"

namespace tessary {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSortModeKey = "entrySortMode";
constexpr std::string_view kSortOrderKey = "sortOrder";
constexpr std::string_view kPinnedKey = "pinnedIDs";
constexpr std::string_view kTagColorsKey = "tagColors";

// Bytes. Media are named in JSON, so that their names are UTF-8 too.
constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestExtension = 32;

std::unexpected<Refusal> refuse(std::string_view reason) { return std::unexpected(Refusal(reason)); }

std::string notebookName(std::string name) {
    return trimmed(name).empty() ? std::string(kUntitledNotebook) : std::move(name);
}

template <class T>
T storedValue(const Settings& settings, std::string_view key) {
    const std::optional<Bytes> bytes = settings.data(key);
    if (!bytes) return {};
    const std::string text(bytes->data.begin(), bytes->data.end());
    return decodeJson<T>(text, ReadContext{}).value_or(T{});
}

template <class T>
std::expected<void, Refusal> storeValue(Settings& settings, std::string_view key, const T& value) {
    const std::expected<std::string, std::string> text = encodeJson(value);
    if (!text) return refuse(text.error());
    return settings.setData(key, Bytes{{text->begin(), text->end()}});
}

std::string_view failureOf(MediaKind kind) {
    if (kind == MediaKind::pdf) return "Notara: pdf store failed — ";
    if (kind == MediaKind::audio) return "Notara: audio store failed — ";
    return "Notara: image save failed — ";
}

/// A name for a media file: `own`, told apart by `number` from 2 on. A long stem gives way to what follows it.
std::string mediaName(const fs::path& own, int number) {
    const bool hasExtension = own.extension().string().size() <= kLongestExtension;
    std::string stem = scrubbedUtf8((hasExtension ? own.stem() : own).string());
    std::string ending = number == 1 ? "" : "-" + std::to_string(number);
    if (hasExtension) ending += scrubbedUtf8(own.extension().string());
    if (stem.size() + ending.size() > kLongestName) {
        std::size_t end = kLongestName - ending.size();
        while (end > 0 && (static_cast<unsigned char>(stem[end]) & 0xC0U) == 0x80U) --end;
        stem.resize(end);
    }
    return stem + ending;
}

/// Copies what lies at `source` under a free name; the name.
FileResult<std::string> placeMedia(FileSystem& files, const fs::path& folder, const fs::path& source) {
    const FileResult<std::string> content = files.read(source);
    if (!content) return std::unexpected(content.error());
    if (const FileResult<void> made = files.createFolders(folder); !made) return std::unexpected(made.error());
    std::string name = mediaName(source.filename(), 1);
    for (int number = 2; exists(files, folder / name); ++number) {
        const FileResult<std::string> present = files.read(folder / name);
        if (present && *present == *content) return name;
        name = mediaName(source.filename(), number);
    }
    if (const FileResult<void> written = writeAtomically(files, folder / name, *content); !written) {
        return std::unexpected(written.error());
    }
    return name;
}

}  // namespace

// ---- notebooks ----

NotebookId JournalStore::addNotebook(Notebook notebook) {
    if (notebook.id == NotebookId{}) notebook.id = NotebookId{services_.ids.next()};
    if (notebook.createdAt == Date{}) notebook.createdAt = services_.clock.now();
    notebook.name = notebookName(std::move(notebook.name));
    const NotebookId id = notebook.id;
    if (!notebooks_.replace(notebook)) notebooks_.append(std::move(notebook));
    saveNotebooks();
    LibraryChange change;
    change.notebooks = {id};
    changed.emit(change);
    return id;
}

NotebookId JournalStore::addNotebook(std::string name) {
    Notebook notebook;
    notebook.name = std::move(name);
    return addNotebook(std::move(notebook));
}

std::expected<void, Refusal> JournalStore::updateNotebook(Notebook notebook) {
    if (!notebooks_.contains(notebook.id)) return refuse("There is no such notebook.");
    addNotebook(std::move(notebook));
    return {};
}

std::expected<void, Refusal> JournalStore::renameNotebook(NotebookId id, std::string name) {
    const Notebook* const present = notebooks_.find(id);
    if (present == nullptr) return refuse("There is no such notebook.");
    Notebook notebook = *present;
    notebook.name = std::move(name);
    return updateNotebook(std::move(notebook));
}

std::vector<PageId> JournalStore::pagesIn(NotebookId notebook) const {
    std::vector<PageId> pages;
    for (const JournalEntry& page : entries_) {
        if (page.notebookID == notebook) pages.push_back(page.id);
    }
    return pages;
}

std::expected<void, Refusal> JournalStore::deleteNotebook(NotebookId id, PagesOfNotebook pages) {
    if (!notebooks_.contains(id)) return refuse("There is no such notebook.");
    const std::vector<PageId> inside = pagesIn(id);
    if (!inside.empty() && pages == PagesOfNotebook::goToTrash) {
        // In files of other origin a subpage may stand in another notebook than its parent.
        moveToTrash(withDescendants(entries_, inside, pageItself));
    }
    if (!inside.empty() && pages == PagesOfNotebook::becomeLoose) {
        setNotebook(inside, std::nullopt);
        pagesChanged(inside);
    }
    entriesSave_.flush();
    notebooks_.extractIf([&](const Notebook& notebook) { return notebook.id == id; });
    saveNotebooks();
    LibraryChange change;
    change.notebooks = {id};
    for (const auto& exam : exams_.extractIf([&](const Exam& each) { return each.notebookID == id; })) {
        change.exams.push_back(exam->id);
    }
    if (!change.exams.empty()) saveExams();
    changed.emit(change);
    return {};
}

// ---- exams ----

std::expected<ExamId, Refusal> JournalStore::addExam(Exam exam) {
    if (exam.id == ExamId{}) exam.id = ExamId{services_.ids.next()};
    if (exam.createdAt == Date{}) exam.createdAt = services_.clock.now();
    if (exams_.contains(exam.id)) return refuse("The exam is already in the library.");
    if (!notebooks_.contains(exam.notebookID)) return refuse("There is no such notebook.");
    const ExamId id = exam.id;
    exams_.append(std::move(exam));
    saveExams();
    LibraryChange change;
    change.exams = {id};
    changed.emit(change);
    return id;
}

std::expected<void, Refusal> JournalStore::updateExam(Exam exam) {
    const ExamId id = exam.id;
    if (!exams_.replace(std::move(exam))) return refuse("There is no such exam.");
    saveExams();
    LibraryChange change;
    change.exams = {id};
    changed.emit(change);
    return {};
}

std::expected<void, Refusal> JournalStore::deleteExam(ExamId id) {
    if (exams_.extractIf([&](const Exam& exam) { return exam.id == id; }).empty()) {
        return refuse("There is no such exam.");
    }
    saveExams();
    LibraryChange change;
    change.exams = {id};
    changed.emit(change);
    return {};
}

// ---- media ----

std::expected<std::string, Refusal> JournalStore::addMedia(MediaKind kind, const fs::path& source) {
    if (access_ == StoreAccess::readOnly) return refuse("The library is open in another program.");
    if (!isPlainFileName(source.filename().string())) return refuse("The file has no usable name.");
    FileResult<std::string> name = placeMedia(services_.files, mediaFolder(kind), source);
    if (name) return std::move(*name);
    services_.console.print(std::string(failureOf(kind)) + name.error().message);
    return refuse(name.error().message);
}

fs::path JournalStore::mediaFolder(MediaKind kind) const {
    switch (kind) {
        case MediaKind::image: return folders_.images();
        case MediaKind::audio: return folders_.audio();
        case MediaKind::pdf: return folders_.pdfs();
        case MediaKind::cover: return folders_.covers();
    }
    return folders_.images();
}

// ---- listing ----

EntrySortMode JournalStore::sortMode() const {
    const std::optional<std::string> name = services_.settings.text(kSortModeKey);
    return name ? enumNamed<EntrySortMode>(*name).value_or(EntrySortMode::created) : EntrySortMode::created;
}

SortOrder JournalStore::sortOrder() const {
    return services_.settings.text(kSortOrderKey) == "oldest" ? SortOrder::oldest : SortOrder::newest;
}

std::vector<PageId> JournalStore::pinnedPages() const {
    return storedValue<std::vector<PageId>>(services_.settings, kPinnedKey);
}

std::expected<void, Refusal> JournalStore::setPinned(PageId page, bool pinned) {
    if (!entries_.contains(page)) return refuse("There is no such page.");
    std::vector<PageId> pages = pinnedPages();
    std::erase(pages, page);
    if (pinned) pages.push_back(page);
    const std::expected<void, Refusal> stored = storeValue(services_.settings, kPinnedKey, pages);
    if (!stored) return stored;
    LibraryChange change;
    change.pages = {page};
    changed.emit(change);
    return {};
}

std::map<std::string, std::string> JournalStore::tagColors() const {
    return storedValue<std::map<std::string, std::string>>(services_.settings, kTagColorsKey);
}

std::expected<void, Refusal> JournalStore::setTagColor(const std::string& tag, std::optional<std::string> colorHex) {
    std::map<std::string, std::string> colors = tagColors();
    colors.erase(tag);
    if (colorHex) colors.emplace(tag, std::move(*colorHex));
    return storeValue(services_.settings, kTagColorsKey, colors);
}

void JournalStore::sortForListing(std::vector<const JournalEntry*>& pages,
                                  const std::function<std::string(std::string_view)>& folded) const {
    struct Row {
        const JournalEntry* page;
        bool pinned;
        std::string title;
        Date date;
    };
    const std::vector<PageId> pinnedList = pinnedPages();
    const std::unordered_set<PageId> pinned(pinnedList.begin(), pinnedList.end());
    const EntrySortMode mode = sortMode();
    const bool forward = sortOrder() == SortOrder::newest;
    std::vector<Row> rows;
    for (const JournalEntry* page : pages) {
        rows.push_back({page, pinned.contains(page->id),
                        mode == EntrySortMode::title ? folded(page->title) : std::string(),
                        mode == EntrySortMode::edited ? lastEdited(*page) : page->date});
    }
    std::ranges::stable_sort(rows, [&](const Row& a, const Row& b) {
        if (a.pinned != b.pinned) return a.pinned;
        if (a.title != b.title) return forward ? a.title < b.title : b.title < a.title;
        return forward ? b.date < a.date : a.date < b.date;
    });
    std::ranges::transform(rows, pages.begin(), [](const Row& row) { return row.page; });
}

}  // namespace tessary
