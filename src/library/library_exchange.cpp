#include "library/library_exchange.h"

#include <optional>
#include <unordered_map>

#include "base/text.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kExportFailure = "Notara: export failed — ";
constexpr std::string_view kImportFailure = "Notara: import failed — ";
constexpr std::string_view kBackupFolder = "Tessary Backups";

using PagePointers = std::vector<const JournalEntry*>;

PagePointers pointersTo(const auto& pages) {
    PagePointers pointers;
    for (const JournalEntry& page : pages) pointers.push_back(&page);
    return pointers;
}

/// Puts each page right behind its parent. Every page comes exactly once: where parents form a loop, the first of them
/// in the list counts as a top-level page.
class ParentsFirst {
public:
    explicit ParentsFirst(PagePointers pages) : pages_(std::move(pages)), placed_(pages_.size()) {
        for (const JournalEntry* const page : pages_) children_.try_emplace(page->id);
        for (std::size_t i = 0; i < pages_.size(); ++i) {
            if (!isTopLevel(i)) children_[*pages_[i]->parentID].push_back(i);
        }
    }

    [[nodiscard]] PagePointers ordered() && {
        for (std::size_t i = 0; i < pages_.size(); ++i) {
            if (isTopLevel(i)) placeTree(i);
        }
        for (std::size_t i = 0; i < pages_.size(); ++i) placeTree(i);
        return std::move(ordered_);
    }

private:
    [[nodiscard]] bool isTopLevel(std::size_t page) const {
        const std::optional<PageId>& parent = pages_[page]->parentID;
        return !parent || !children_.contains(*parent);
    }

    void placeTree(std::size_t root) {
        std::vector<std::size_t> waiting{root};
        while (!waiting.empty()) {
            const std::size_t page = waiting.back();
            waiting.pop_back();
            if (placed_[page]) continue;
            placed_[page] = true;
            ordered_.push_back(pages_[page]);
            const std::vector<std::size_t>& children = children_.at(pages_[page]->id);
            waiting.insert(waiting.end(), children.rbegin(), children.rend());
        }
    }

    PagePointers pages_;
    std::vector<bool> placed_;
    std::unordered_map<PageId, std::vector<std::size_t>> children_;
    PagePointers ordered_;
};

std::string onOneLine(std::string_view text) {
    std::string line;
    for (const std::string_view piece : splitLines(trimmed(text))) {
        if (!line.empty()) line += ' ';
        line += piece;
    }
    return line;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

std::string markdownOf(const JournalEntry& page, const RecordList<Notebook>& notebooks) {
    const std::string title = onOneLine(page.title);
    std::string text = "# " + (title.empty() ? "Untitled" : title) + "\n";
    if (!page.tags.empty()) text += "Tags: " + joined(page.tags, ", ") + "\n";
    const Notebook* const notebook = page.notebookID ? notebooks.find(*page.notebookID) : nullptr;
    if (notebook != nullptr) text += "Notebook: " + onOneLine(notebook->name) + "\n";
    const std::string_view body = withoutTrailingBlanks(page.body);
    if (!body.empty()) text.append("\n").append(body).append("\n");
    return text;
}

std::unexpected<Refusal> failed(Console& console, std::string_view prefix, std::string_view sentence,
                                const std::string& error) {
    console.print(std::string(prefix) + error);
    return std::unexpected(Refusal(sentence));
}

std::unexpected<Refusal> exportFailed(Console& console, const std::string& error) {
    return failed(console, kExportFailure, "The export could not be written.", error);
}

/// Parents are in the library by now, if they come at all.
void dropMissingTies(JournalEntry& page, const JournalStore& store) {
    if (page.parentID && !store.entries().contains(*page.parentID)) page.parentID.reset();
    if (page.notebookID && !store.notebooks().contains(*page.notebookID)) page.notebookID.reset();
}

}  // namespace

ExportSource exportSource(const JournalStore& store) {
    return {.pages = store.entries().snapshot(), .notebooks = store.notebooks().snapshot()};
}

std::expected<std::string, Refusal> exportedJson(const ExportSource& source) {
    if (source.pages.empty()) return std::unexpected(Refusal(kNothingToExport));
    return encodeJson(source.pages, kExportFormat);
}

std::expected<std::string, Refusal> exportedJson(const JournalStore& store) {
    return exportedJson(exportSource(store));
}

std::expected<std::string, Refusal> exportedMarkdown(const ExportSource& source) {
    if (source.pages.empty()) return std::unexpected(Refusal(kNothingToExport));
    const RecordList<JournalEntry> pages(source.pages);
    const RecordList<Notebook> notebooks(source.notebooks);
    std::string document;
    for (const JournalEntry* const page : ParentsFirst(pointersTo(pages)).ordered()) {
        if (!document.empty()) document += '\n';
        document += markdownOf(*page, notebooks);
    }
    return document;
}

std::expected<std::string, Refusal> exportedMarkdown(const JournalStore& store) {
    return exportedMarkdown(exportSource(store));
}

std::expected<void, Refusal> writeExport(const fs::path& file, std::string_view content, FileSystem& files,
                                         Console& console) {
    const FileResult<void> written = writeAtomically(files, file, content);
    if (!written) return exportFailed(console, written.error().message);
    return {};
}

std::expected<std::vector<JournalEntry>, Refusal> readExport(const fs::path& file, Date now,
                                                             const StoreServices& services) {
    const FileResult<std::string> content = services.files.read(file);
    if (!content) {
        return failed(services.console, kImportFailure, "The file could not be read.", content.error().message);
    }
    const ReadContext context{
        .now = now, .freshId = [&ids = services.ids] { return ids.next(); }, .dates = JsonDates::iso8601};
    const auto pages = decodeJson<std::vector<JournalEntry>>(*content, context);
    if (!pages) {
        return failed(services.console, kImportFailure, "The file holds no pages that can be read.",
                      pages.error().describe(file.filename().string()));
    }
    std::vector<JournalEntry> ordered;
    ordered.reserve(pages->size());
    for (const JournalEntry* const page : ParentsFirst(pointersTo(*pages)).ordered()) ordered.push_back(*page);
    return ordered;
}

ImportCount addMissing(JournalStore& store, std::span<const JournalEntry> pages) {
    ImportCount count;
    for (JournalEntry page : pages) {
        dropMissingTies(page, store);
        if (store.addPage(std::move(page))) {
            ++count.added;
        } else {
            ++count.skipped;
        }
    }
    return count;
}

std::expected<ImportCount, Refusal> importJson(JournalStore& store, const fs::path& file,
                                               const StoreServices& services) {
    const auto pages = readExport(file, services.clock.now(), services);
    if (!pages) return std::unexpected(pages.error());
    return addMissing(store, *pages);
}

fs::path autoBackupFolder(const fs::path& documents) { return documents / kBackupFolder; }

fs::path autoBackupFile(const fs::path& documents, const StoreServices& services) {
    const std::string day = dayKey(services.calendar.civilTime(services.clock.now()).day);
    return autoBackupFolder(documents) / ("Tessary-" + day + ".json");
}

std::expected<void, Refusal> writeAutoBackup(const JournalStore& store, const fs::path& documents,
                                             const StoreServices& services) {
    if (!store.loadProblems().empty()) {
        return std::unexpected(Refusal("No backup is made while a file of the library cannot be read."));
    }
    if (store.entries().empty()) return {};
    const std::expected<std::string, Refusal> content = exportedJson(store);
    if (!content) return std::unexpected(content.error());
    if (const FileResult<void> made = services.files.createFolders(autoBackupFolder(documents)); !made) {
        return exportFailed(services.console, made.error().message);
    }
    return writeExport(autoBackupFile(documents, services), *content, services.files, services.console);
}

}  // namespace tessary
