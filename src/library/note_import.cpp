#include "library/note_import.h"

#include <deque>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "base/text.h"
#include "library/image_importer.h"
#include "library/import_plan.h"
#include "library/import_problems.h"
#include "library/markdown_note.h"
#include "library/markdown_scan.h"
#include "library/page_index.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kLargestNote = 16UL * 1024 * 1024;  // bytes

bool isPlainText(const fs::path& note) { return equalsIgnoringAsciiCase(note.extension().string(), ".txt"); }

/// A file in the working folder has one too.
fs::path folderOf(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : fs::path("."); }

/// The text of a note; the error goes on after its name.
std::expected<std::string, std::string> noteText(const FileSystem& files, const fs::path& note, std::uint64_t size) {
    const std::unexpected tooLarge(std::string("is larger than 16 MiB"));
    if (size > kLargestNote) return tooLarge;
    const FileResult<std::string> content = files.read(note);
    if (!content) return std::unexpected("cannot be read: " + content.error().message);
    if (content->size() > kLargestNote) return tooLarge;
    if (content->contains('\0')) return std::unexpected("holds NUL bytes, so it is no text");
    if (!isValidUtf8(*content)) return std::unexpected("is not UTF-8 text");
    return replacedAll(replacedAll(withoutByteOrderMark(*content), "\r\n", "\n"), "\r", "\n");
}

/// Where pages come to stand. A notebook or a folder's page is only made when a page is there to stand in it.
struct Spot {
    Spot* above = nullptr;  ///< null for a top level
    std::string name;       ///< of the notebook or page to make
    bool isReady = false;   ///< the members below are set
    std::optional<NotebookId> notebook;
    std::optional<PageId> page;
    PageIndex::Place place = 0;
};

}  // namespace

class NoteImport::Importer {
public:
    Importer(JournalStore& store, const StoreServices& services, const FrontMatterReader& frontMatter,
             NoteImportOptions options)
        : store_(store),
          services_(services),
          frontMatter_(frontMatter),
          options_(std::move(options)),
          known_(store.entries().snapshot()) {}

    void findNotes(const std::vector<fs::path>& paths) {
        index_.emplace(store_.entries(), RecordList<JournalEntry>(std::exchange(known_, {})));
        for (const fs::path& path : paths) {
            if (store_.access() == StoreAccess::readOnly) {
                problems_.add(path, "cannot be imported while the library is open in another program");
                continue;
            }
            problems_.guard(path, [&] {
                auto plan = planImport(path, services_.files, problems_, options_.stop);
                if (plan) plans_.push_back(std::move(*plan));
            });
        }
        for (const ImportPlan& plan : plans_) total_ += noteCount(plan.pages);
        report_.cancelled = options_.stop.stop_requested();  // then the plans have holes
    }

    bool step() {
        if (report_.cancelled) return false;
        while (waiting_.empty()) {
            if (begun_ == plans_.size()) return false;
            const ImportPlan& plan = plans_[begun_++];
            problems_.guard(plan.path, [&] { begin(plan); });
        }
        report_.cancelled = options_.stop.stop_requested();
        if (report_.cancelled) return false;
        const auto [page, above] = waiting_.back();
        waiting_.pop_back();
        Spot& spot = spots_.emplace_back();
        spot.above = above;
        spot.name = page->name;
        if (!page->note.empty()) importFile(*page, spot, *imageImporter_);
        wait(page->subpages, spot);
        return true;
    }

    [[nodiscard]] NoteImportReport report() const {
        NoteImportReport report = report_;
        report.images = images_.size();
        return report;
    }

private:
    /// What is to be taken next, and where it comes to stand.
    struct Waiting {
        const PlannedPage* page = nullptr;
        Spot* above = nullptr;
    };

    void begin(const ImportPlan& plan) {
        Spot& top = spots_.emplace_back();
        if (options_.notebook || !plan.isFolder) {
            top.isReady = true;
            top.notebook = options_.notebook;
            top.place = index_->topLevel(options_.notebook);
        } else {
            top.name = notebookNameFor(plan.path);
        }
        imageImporter_.emplace(store_, services_.files, plan.isFolder ? plan.path : folderOf(plan.path),
                               plan.isFolder ? ImageSearch::wholeImported : ImageSearch::nearNote);
        wait(plan.pages, top);
    }

    void wait(const std::vector<PlannedPage>& pages, Spot& above) {
        for (std::size_t i = pages.size(); i-- > 0;) waiting_.push_back({.page = &pages[i], .above = &above});
    }

    std::string notebookNameFor(const fs::path& folder) const {
        const fs::path name = folder.filename();
        const bool isNamed = !name.empty() && name != "." && name != "..";
        std::string shown = shownName(isNamed ? folder : services_.files.resolved(folder));
        return shown.empty() ? std::string(kUntitledNotebook) : shown;
    }

    void importFile(const PlannedPage& page, Spot& spot, ImageImporter& images) {
        ++done_;
        problems_.guard(page.note, [&] {
            const std::expected<void, std::string> taken = takeNote(page, spot, images);
            if (!taken) problems_.add(page.note, taken.error());
        });
        problems_.guard(page.note, [&] {
            if (options_.progress) options_.progress({.done = done_, .total = total_, .file = page.note});
        });
    }

    std::expected<void, std::string> takeNote(const PlannedPage& planned, Spot& spot, ImageImporter& images) {
        const FileResult<FileInfo> info = services_.files.info(planned.note);
        if (!info) return std::unexpected("cannot be read: " + info.error().message);
        const std::expected<std::string, std::string> text = noteText(services_.files, planned.note, info->size);
        if (!text) return std::unexpected(text.error());
        JournalEntry page;
        page.title = planned.name;
        page.date = info->modified;
        if (isPlainText(planned.note)) {
            page.body = withoutOuterBlankLines(*text);
        } else {
            fillFromMarkdown(page, *text, planned.note, images);
        }
        if (const auto ready = makeReady(*spot.above); !ready) return std::unexpected(ready.error());
        spot.place = index_->below(spot.above->place, page.title);
        spot.page = index_->withBody(spot.place, page.body);
        spot.isReady = spot.page.has_value();
        if (spot.isReady) {
            ++report_.alreadyThere;
            return {};
        }
        images_.insert(page.imageFilenames.begin(), page.imageFilenames.end());
        return addTo(spot, std::move(page));
    }

    void fillFromMarkdown(JournalEntry& page, std::string_view text, const fs::path& path, ImageImporter& images) {
        MarkdownNote note = readMarkdownNote(text, frontMatter_, services_.calendar);
        for (const std::string& problem : note.problems) problems_.add(path, problem);
        if (note.title) page.title = *note.title;
        if (note.date) page.date = *note.date;
        page.updatedAt = note.updatedAt;
        page.tags = std::move(note.tags);
        const std::vector<ImageReference> shown = imageReferences(note.body);
        std::vector<std::optional<std::string>> names;
        std::unordered_set<std::string> seen;
        for (const ImageReference& image : shown) {
            StoredImage stored = images.take(image, folderOf(path));
            if (!stored.problem.empty() && seen.insert(stored.problem).second) problems_.add(path, stored.problem);
            if (stored.name && seen.insert(*stored.name).second) page.imageFilenames.push_back(*stored.name);
            names.push_back(std::move(stored.name));
        }
        page.body = withImageTargets(note.body, shown, names);
    }

    /// Finds or makes what a spot stands for. The error goes on after a note's name.
    std::expected<void, std::string> makeReady(Spot& spot) {
        if (spot.isReady) return {};
        if (spot.above == nullptr) {
            spot.notebook = notebookNamed(spot.name);
            spot.place = index_->topLevel(spot.notebook);
            spot.isReady = true;
            return {};
        }
        if (auto ready = makeReady(*spot.above); !ready) return ready;
        spot.place = index_->below(spot.above->place, spot.name);
        spot.page = index_->withBody(spot.place, {});
        if (!spot.page) spot.page = index_->first(spot.place);
        spot.isReady = spot.page.has_value();
        if (spot.isReady) return {};
        JournalEntry page;
        page.title = spot.name;
        return addTo(spot, std::move(page));
    }

    /// Adds the page a spot stands for.
    std::expected<void, std::string> addTo(Spot& spot, JournalEntry page) {
        page.notebookID = spot.above->notebook;
        page.parentID = spot.above->page;
        const std::expected<PageId, Refusal> added = store_.addPage(std::move(page));
        if (!added) return std::unexpected("could not be added: " + added.error());
        spot.page = *added;
        spot.isReady = true;
        index_->add(*store_.entries().find(*added), spot.place);
        report_.added.push_back(*added);
        return {};
    }

    NotebookId notebookNamed(const std::string& name) {
        for (const Notebook& notebook : store_.notebooks()) {
            if (notebook.name == name) return notebook.id;
        }
        report_.notebooks.push_back(store_.addNotebook(name));
        return report_.notebooks.back();
    }

    JournalStore& store_;
    const StoreServices& services_;
    const FrontMatterReader& frontMatter_;
    NoteImportOptions options_;
    RecordList<JournalEntry>::Snapshot known_;  ///< until the index is made
    NoteImportReport report_;
    ImportProblems problems_{report_.problems};
    std::optional<PageIndex> index_;
    std::vector<ImportPlan> plans_;
    std::size_t begun_ = 0;  ///< plans
    std::vector<Waiting> waiting_;  ///< of the plan at hand, the next one last
    std::deque<Spot> spots_;        ///< keep their places
    std::optional<ImageImporter> imageImporter_;
    std::unordered_set<std::string> images_;
    std::size_t done_ = 0;
    std::size_t total_ = 0;
};

NoteImport::NoteImport(JournalStore& store, const StoreServices& services, const FrontMatterReader& frontMatter,
                       NoteImportOptions options)
    : importer_(std::make_unique<Importer>(store, services, frontMatter, std::move(options))) {}

NoteImport::~NoteImport() = default;

void NoteImport::findNotes(const std::vector<fs::path>& paths) { importer_->findNotes(paths); }

bool NoteImport::step() { return importer_->step(); }

NoteImportReport NoteImport::report() const { return importer_->report(); }

NoteImportReport importNotes(JournalStore& store, const std::vector<fs::path>& paths, const StoreServices& services,
                             const FrontMatterReader& frontMatter, const NoteImportOptions& options) {
    NoteImport import(store, services, frontMatter, options);
    import.findNotes(paths);
    while (import.step()) {
    }
    return import.report();
}

}  // namespace tessary
