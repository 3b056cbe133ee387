#include "app/library_content.h"

#include <optional>
#include <unordered_map>

#include "base/text.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

using Kind = LibraryFinding::Kind;

struct Reader {
    const FileSystem& files;
    const ReadContext& context;
    std::vector<LibraryFinding>& unread;

    /// Absent when the file is missing or cannot be read; `state` tells.
    template <class Root>
    std::optional<Root> read(const fs::path& path, LibraryContent::State& state) const {
        const std::string name = path.filename().string();
        const FileResult<std::string> content = files.read(path);
        if (!content && content.error().kind == FileError::Kind::notFound) return std::nullopt;
        if (!content) {
            state = LibraryContent::State::broken;
            complain(Kind::unreadableFile, name, name + ": " + content.error().message);
            return std::nullopt;
        }
        std::expected<Root, DecodingError> root = decodeJson<Root>(*content, context);
        if (!root) {
            state = LibraryContent::State::broken;
            complain(Kind::undecodableFile, name, root.error().describe(name));
            return std::nullopt;
        }
        state = LibraryContent::State::loaded;
        return std::move(*root);
    }

    void complain(Kind kind, const std::string& name, std::string text) const {
        unread.push_back({.kind = kind, .file = name, .text = std::move(text)});
    }

    template <class T>
    void readList(const fs::path& path, LibraryContent::File<T>& file) const {
        using Snapshot = typename RecordList<T>::Snapshot;
        file.records = RecordList<T>(read<Snapshot>(path, file.state).value_or(Snapshot{}));
    }
};

std::string named(std::string_view title, const std::string& id) {
    const std::string_view shown = trimmed(title);
    return "“" + std::string(shown.empty() ? "Untitled" : shown) + "” (" + id + ")";
}

}  // namespace

LibraryContent loadLibrary(const LibraryFolders& folders, const FileSystem& files, const ReadContext& context) {
    LibraryContent library;
    const Reader reader{files, context, library.unread};
    reader.readList(folders.entries(), library.pages);
    reader.readList(folders.notebooks(), library.notebooks);
    reader.readList(folders.trash(), library.trash);
    reader.readList(folders.exams(), library.exams);
    library.cardFile = reader.read<FlashcardFile>(folders.flashcards(), library.cards.state).value_or(FlashcardFile{});
    library.cards.records = RecordList<Flashcard>(std::exchange(library.cardFile.cards, {}));
    return library;
}

const JournalEntry* parentOf(const JournalEntry& page, const RecordList<JournalEntry>& pages) {
    return page.parentID ? pages.find(*page.parentID) : nullptr;
}

std::vector<ParentLoop> parentLoops(const RecordList<JournalEntry>& pages) {
    std::unordered_map<const JournalEntry*, std::size_t> walkOf;
    std::vector<ParentLoop> loops;
    std::size_t walk = 0;
    for (const JournalEntry& start : pages) {
        ++walk;
        const JournalEntry* page = &start;
        while (page != nullptr && walkOf.try_emplace(page, walk).second) page = parentOf(*page, pages);
        if (page == nullptr || walkOf.at(page) != walk) continue;
        ParentLoop& loop = loops.emplace_back();
        const JournalEntry* member = page;
        do {
            loop.push_back(member);
            member = parentOf(*member, pages);
        } while (member != page);
    }
    return loops;
}

std::map<PageId, std::size_t> cardsWithoutPage(const LibraryContent& library) {
    std::map<PageId, std::size_t> counts;
    if (!library.pages.isKnown() || !library.trash.isKnown()) return counts;
    for (const Flashcard& card : library.cards.records) {
        const PageId page = card.pageID;
        if (!library.pages.records.contains(page) && !library.trash.records.contains(page)) ++counts[page];
    }
    return counts;
}

bool canRecoverCards(const LibraryContent& library) {
    return library.pages.state == LibraryContent::State::loaded && library.trash.isKnown();
}

std::string nameOf(const JournalEntry& page) { return named(page.title, page.id.toString()); }
std::string nameOf(const TrashedEntry& trashed) { return nameOf(trashed.entry); }
std::string nameOf(const Notebook& notebook) { return named(notebook.name, notebook.id.toString()); }
std::string nameOf(const Exam& exam) { return named(exam.title, exam.id.toString()); }
std::string nameOf(const Flashcard& card) { return named(card.front, card.id.toString()); }

std::string countOf(std::size_t count, std::string_view thing) {
    return std::to_string(count) + " " + std::string(thing) + (count == 1 ? "" : "s");
}

}  // namespace tessary
