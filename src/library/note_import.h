#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "library/journal_store.h"
#include "platform/front_matter.h"

/// Brings notes that other programs wrote into the library.
namespace tessary {

struct NoteImportProgress {
    std::size_t done;            ///< notes looked at so far, this one included
    std::size_t total;           ///< notes in all
    std::filesystem::path file;  ///< the note just looked at
};

struct NoteProblem {
    std::filesystem::path path;
    std::string text;  ///< sentence naming what was wrong
};

struct NoteImportReport {
    std::vector<PageId> added;          ///< in order, parents before their subpages
    std::vector<NotebookId> notebooks;  ///< made for the pages
    std::size_t alreadyThere = 0;       ///< notes that a page of the same place, title and body holds already
    std::size_t images = 0;             ///< different images that the added pages show
    std::vector<NoteProblem> problems;
    bool cancelled = false;  ///< stopped before the last note; what came in stays
};

struct NoteImportOptions {
    std::optional<NotebookId> notebook;  ///< takes everything
    std::function<void(const NoteImportProgress&)> progress;
    std::stop_token stop;
};

/// Adds Markdown (.md, .markdown) and plain text (.txt) to the library.
///
/// A folder becomes a notebook, found by its name or made, its notes top-level pages. A folder inside it becomes a page
/// with subpages: the page of the note that bears the folder's name, in it or beside it, else of its index or README
/// note, else an empty one. A note given by itself becomes a loose page. Images that notes show are copied if they lie
/// in the imported folder, or in the folder of a note given by itself.
///
/// A note that cannot be taken is a problem in the report and stops nothing. Nothing is thrown. Main thread; blocks.
[[nodiscard]] NoteImportReport importNotes(JournalStore& store, const std::vector<std::filesystem::path>& paths,
                                           const StoreServices& services, const FrontMatterReader& frontMatter,
                                           const NoteImportOptions& options = {});

/// The same, note by note, for a window that stays alive meanwhile: pages may change between two steps. Main thread,
/// but for `findNotes`.
class NoteImport {
public:
    /// `store`, `services` and `frontMatter` outlive the import.
    NoteImport(JournalStore& store, const StoreServices& services, const FrontMatterReader& frontMatter,
               NoteImportOptions options);
    ~NoteImport();
    NoteImport(const NoteImport&) = delete;
    NoteImport& operator=(const NoteImport&) = delete;

    /// Reads the folders. Once, before the first step; any thread, while nothing else is asked of the import.
    void findNotes(const std::vector<std::filesystem::path>& paths);
    /// Takes the next note. False when there is none left, or the import was stopped.
    bool step();
    /// After the last step.
    [[nodiscard]] NoteImportReport report() const;

private:
    class Importer;
    std::unique_ptr<Importer> importer_;
};

}  // namespace tessary
