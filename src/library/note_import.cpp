#include "library/note_import.h"

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "base/text.h"
#include "library/markdown_note.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kLargestNote = 16UL * 1024 * 1024;  // bytes
constexpr int kDeepestFolder = 64;                          // below the imported one
constexpr auto kNoteExtensions = std::to_array<std::string_view>({".md", ".markdown", ".txt"});
constexpr auto kImageExtensions = std::to_array<std::string_view>(
    {".png", ".jpg", ".jpeg", ".gif", ".webp", ".svg", ".heic", ".bmp", ".tiff", ".avif"});
constexpr auto kAttachmentFolders = std::to_array<std::string_view>(
    {"attachments", "Attachments", "assets", "images", "img", "media", "files", "resources", "_resources"});

bool hasExtension(const fs::path& path, const auto& extensions) {
    return std::ranges::find(extensions, asciiLowered(path.extension().string())) != extensions.end();
}

bool isPlainText(const fs::path& note) { return equalsIgnoringAsciiCase(note.extension().string(), ".txt"); }

/// For sentences and titles, which must be good UTF-8 whatever a disk holds.
std::string nameOf(const fs::path& path) { return scrubbedUtf8(path.filename().string()); }

std::string stemOf(const fs::path& path) { return scrubbedUtf8(path.stem().string()); }

class Problems {
public:
    explicit Problems(std::vector<NoteProblem>& list) : list_(list) {}

    /// `what` goes on after the name of the file.
    void add(const fs::path& path, std::string_view what) {
        list_.push_back({path, '"' + nameOf(path) + "\" " + std::string(what) + '.'});
    }

    /// Does `work`; what it throws is a problem of the file.
    void guard(const fs::path& path, const auto& work) {
        try {
            work();
        } catch (const std::exception& error) {
            add(path, std::string("could not be imported: ") + error.what());
        } catch (...) {
            add(path, "could not be imported");
        }
    }

private:
    std::vector<NoteProblem>& list_;
};

// ---- what lies in the folders ----

/// A page to be: a note, a folder, or a folder with the note that tells its page.
struct PlannedPage {
    std::string name;  ///< its title unless the note has one
    fs::path note;     ///< empty for a mere folder
    bool isFolder = false;
    std::vector<PlannedPage> subpages;
};

std::size_t noteCount(const std::vector<PlannedPage>& pages) {
    std::size_t count = 0;
    for (const PlannedPage& page : pages) count += (page.note.empty() ? 0 : 1) + noteCount(page.subpages);
    return count;
}

class Planner {
public:
    Planner(const FileSystem& files, Problems& problems, const std::stop_token& stop)
        : files_(files), problems_(problems), stop_(stop) {}

    /// In the order of names. Folders without any note are left out.
    std::vector<PlannedPage> pagesIn(const fs::path& folder, int depth = 0) {
        std::vector<PlannedPage> pages;
        const FileResult<std::vector<DirectoryEntry>> entries = files_.list(folder);
        if (!entries) problems_.add(folder, "cannot be read: " + entries.error().message);
        if (!entries || stop_.stop_requested()) return pages;
        for (const DirectoryEntry& entry : *entries) addEntry(pages, entry, folder / entry.name, depth);
        giveFoldersTheirNotes(pages);
        return pages;
    }

private:
    void addEntry(std::vector<PlannedPage>& pages, const DirectoryEntry& entry, const fs::path& path, int depth) {
        if (entry.name.starts_with('.')) return;
        if (entry.kind == FileKind::directory) {
            if (!entry.isSymbolicLink) addFolder(pages, path, depth + 1);
        } else if (hasExtension(path, kNoteExtensions)) {
            if (entry.kind == FileKind::file) pages.push_back({.name = stemOf(path), .note = path, .subpages = {}});
            if (entry.kind == FileKind::other) problems_.add(path, "is not a file that can be read");
        }
    }

    void addFolder(std::vector<PlannedPage>& pages, const fs::path& path, int depth) {
        if (depth > kDeepestFolder) return problems_.add(path, "lies too deep inside other folders");
        std::vector<PlannedPage> inside = pagesIn(path, depth);
        if (inside.empty()) return;
        pages.push_back({.name = nameOf(path), .note = {}, .isFolder = true, .subpages = std::move(inside)});
    }

    static void giveFoldersTheirNotes(std::vector<PlannedPage>& pages) {
        std::unordered_map<std::string, PlannedPage*> beside;
        for (PlannedPage& page : pages) {
            if (!page.isFolder) beside.try_emplace(asciiLowered(page.name), &page);
        }
        std::unordered_set<const PlannedPage*> moved;
        for (PlannedPage& folder : pages) {
            if (!folder.isFolder || takeNoteInside(folder, folder.name)) continue;
            const auto found = beside.find(asciiLowered(folder.name));
            if (found != beside.end() && moved.insert(found->second).second) {
                folder.note = found->second->note;
            } else if (!takeNoteInside(folder, "index")) {
                takeNoteInside(folder, "readme");
            }
        }
        std::vector<PlannedPage> kept;
        for (PlannedPage& page : pages) {
            if (!moved.contains(&page)) kept.push_back(std::move(page));
        }
        pages = std::move(kept);
    }

    static bool takeNoteInside(PlannedPage& folder, std::string_view name) {
        const auto found = std::ranges::find_if(folder.subpages, [&](const PlannedPage& page) {
            return !page.isFolder && equalsIgnoringAsciiCase(page.name, name);
        });
        if (found == folder.subpages.end()) return false;
        folder.note = found->note;
        folder.subpages.erase(found);
        return true;
    }

    const FileSystem& files_;
    Problems& problems_;
    const std::stop_token& stop_;
};

// ---- pages that are there ----

/// Finds live pages by where they stand and what they say. A place is a notebook's top level, or all pages of one title
/// in one place.
class PageIndex {
public:
    using Place = std::size_t;

    explicit PageIndex(const RecordList<JournalEntry>& entries) : entries_(entries) {
        for (const JournalEntry& page : entries) add(page, placeOf(page));
    }

    Place topLevel(const std::optional<NotebookId>& notebook) {
        return numberOf(notebook ? notebook->toString() : std::string());
    }
    Place below(Place place, const std::string& title) { return numberOf(std::to_string(place) + ' ' + title); }

    /// The page that was the first of its title there.
    std::optional<PageId> first(Place place) const {
        const auto found = first_.find(place);
        return found == first_.end() ? std::nullopt : std::optional(found->second);
    }

    std::optional<PageId> withBody(Place place, const std::string& body) const {
        const auto [begin, end] = byContent_.equal_range(contentKey(place, body));
        for (auto each = begin; each != end; ++each) {
            const JournalEntry* const page = entries_.find(each->second.page);
            if (each->second.place == place && page != nullptr && page->body == body) return page->id;
        }
        return std::nullopt;
    }

    void add(const JournalEntry& page, Place place) {
        first_.try_emplace(place, page.id);
        byContent_.emplace(contentKey(place, page.body), PlacedPage{place, page.id});
    }

private:
    struct PlacedPage {
        Place place;
        PageId page;
    };

    static std::size_t contentKey(Place place, const std::string& body) {
        constexpr std::size_t kSpread = 0x9E3779B97F4A7C15U;
        return std::hash<std::string>{}(body) ^ (place * kSpread);
    }

    Place numberOf(std::string key) { return numbers_.try_emplace(std::move(key), numbers_.size()).first->second; }

    /// Where parents form a loop, the page asked for first counts as a top-level page.
    Place placeOf(const JournalEntry& page) {
        std::vector<const JournalEntry*> unplaced;
        const JournalEntry* next = &page;
        while (next != nullptr && places_.try_emplace(next->id, topLevel(next->notebookID)).second) {
            unplaced.push_back(next);
            next = next->parentID ? entries_.find(*next->parentID) : nullptr;
        }
        if (unplaced.empty()) return places_.at(page.id);
        Place place = next == nullptr ? topLevel(unplaced.back()->notebookID) : places_.at(next->id);
        for (; !unplaced.empty(); unplaced.pop_back()) {
            place = below(place, unplaced.back()->title);
            places_[unplaced.back()->id] = place;
        }
        return place;
    }

    const RecordList<JournalEntry>& entries_;
    std::unordered_map<std::string, Place> numbers_;
    std::unordered_map<PageId, Place> places_;
    std::unordered_map<Place, PageId> first_;
    std::unordered_multimap<std::size_t, PlacedPage> byContent_;
};

// ---- images ----

struct StoredImage {
    std::optional<std::string> name;  ///< in the library's images
    std::string problem;              ///< goes on after the name of the note; neither: it is none of ours
};

enum class ImageSearch {
    nearNote,       ///< beside the note and in the folders usual for attachments
    wholeImported,  ///< also anywhere in the imported folder
};

/// Brings the images of the notes under one root into the library.
class ImageImporter {
public:
    ImageImporter(JournalStore& store, const FileSystem& files, fs::path root, ImageSearch search)
        : store_(store), files_(files), root_(std::move(root)), search_(search), realRoot_(files.resolved(root_)) {}

    StoredImage take(const ImageReference& image, const fs::path& noteFolder) {
        if (image.target.empty() || isOfTheWeb(image.target)) return {};
        const auto failed = [&](std::string_view why) {
            return StoredImage{{}, "shows the image \"" + image.target + "\", which " + std::string(why)};
        };
        const fs::path inRoot = (noteFolder.lexically_relative(root_) / image.target).lexically_normal();
        const bool isFileAddress = asciiLowered(image.target).starts_with("file:");
        if (isFileAddress || inRoot.is_absolute() || *inRoot.begin() == "..") return failed(kOutside);
        if (!hasExtension(image.target, kImageExtensions)) {
            return image.form == ImageForm::wiki ? StoredImage{} : failed("is of no known kind of image");
        }
        const Found found = find(image, noteFolder);
        if (found.path.empty()) return failed(found.isOutside ? kOutside : "was not found");
        const std::expected<std::string, Refusal> name = stored(found.path);
        return name ? StoredImage{*name, {}} : failed("could not be copied: " + name.error());
    }

private:
    static constexpr std::string_view kOutside = "lies outside the imported folder and was not copied";

    struct Found {
        fs::path path;
        bool isOutside = false;  ///< something was found, but a link leads out of the root to it
    };

    /// An address with a scheme, other than of a file. A single letter is a drive of another system.
    static bool isOfTheWeb(std::string_view target) {
        if (target.starts_with("//")) return true;
        constexpr std::string_view kOfSchemes = "abcdefghijklmnopqrstuvwxyz0123456789+-.";
        const std::string address = asciiLowered(target);
        const std::size_t end = std::min(address.find_first_not_of(kOfSchemes), address.size());
        return end > 1 && address.substr(end).starts_with(':') && !address.starts_with("file:");
    }

    Found find(const ImageReference& image, const fs::path& noteFolder) {
        Found found;
        if (tryPath(noteFolder / image.target, found) || tryPath(root_ / image.target, found)) return found;
        for (const std::string_view folder : kAttachmentFolders) {
            if (tryPath(noteFolder / folder / image.target, found)) return found;
            if (tryPath(root_ / folder / image.target, found)) return found;
        }
        if (image.form != ImageForm::wiki || search_ == ImageSearch::nearNote) return found;
        if (!namesKnown_) learnNames();
        const auto named = byName_.find(asciiLowered(fs::path(image.target).filename().string()));
        if (named != byName_.end()) tryPath(named->second, found);
        return found;
    }

    bool tryPath(const fs::path& path, Found& found) const {
        const FileResult<FileInfo> info = files_.info(path);
        if (!info || info->kind != FileKind::file) return false;
        const fs::path real = files_.resolved(path);
        const auto [rootEnd, rest] = std::ranges::mismatch(realRoot_, real);
        const bool isInside = rootEnd == realRoot_.end();
        found = isInside ? Found{path, false} : Found{{}, true};
        return isInside;
    }

    /// The shallowest image of a name counts.
    void learnNames() {
        namesKnown_ = true;
        std::vector<fs::path> level{root_};
        for (int depth = 0; !level.empty() && depth <= kDeepestFolder; ++depth) {
            std::vector<fs::path> deeper;
            for (const fs::path& folder : level) learnNamesIn(folder, deeper);
            level = std::move(deeper);
        }
    }

    void learnNamesIn(const fs::path& folder, std::vector<fs::path>& deeper) {
        const FileResult<std::vector<DirectoryEntry>> entries = files_.list(folder);
        if (!entries) return;
        for (const DirectoryEntry& entry : *entries) {
            if (entry.name.starts_with('.')) continue;
            const fs::path path = folder / entry.name;
            if (entry.kind == FileKind::directory && !entry.isSymbolicLink) deeper.push_back(path);
            if (entry.kind != FileKind::file || !hasExtension(path, kImageExtensions)) continue;
            byName_.try_emplace(asciiLowered(entry.name), path);
        }
    }

    std::expected<std::string, Refusal> stored(const fs::path& path) {
        const auto known = storedNames_.find(path.lexically_normal().string());
        if (known != storedNames_.end()) return known->second;
        std::expected<std::string, Refusal> name = store_.addMedia(MediaKind::image, path);
        if (name) storedNames_.emplace(path.lexically_normal().string(), *name);
        return name;
    }

    JournalStore& store_;
    const FileSystem& files_;
    fs::path root_;
    ImageSearch search_;
    fs::path realRoot_;
    bool namesKnown_ = false;
    std::unordered_map<std::string, fs::path> byName_;  ///< by the name in small letters
    std::unordered_map<std::string, std::string> storedNames_;
};

// ---- the import ----

/// The text of a note; the error goes on after its name.
std::expected<std::string, std::string> noteText(const FileSystem& files, const fs::path& note, std::uint64_t size) {
    const auto refuse = [](std::string why) { return std::unexpected(std::move(why)); };
    constexpr std::string_view kTooLarge = "is larger than 16 MiB";
    if (size > kLargestNote) return refuse(std::string(kTooLarge));
    const FileResult<std::string> content = files.read(note);
    if (!content) return refuse("cannot be read: " + content.error().message);
    if (content->size() > kLargestNote) return refuse(std::string(kTooLarge));
    if (content->contains('\0')) return refuse("holds NUL bytes, so it is no text");
    if (!isValidUtf8(*content)) return refuse("is not UTF-8 text");
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

class NoteImporter {
public:
    NoteImporter(JournalStore& store, const StoreServices& services, const FrontMatterReader& frontMatter,
                 const NoteImportOptions& options)
        : store_(store), services_(services), frontMatter_(frontMatter), options_(options), index_(store.entries()) {}

    NoteImportReport run(const std::vector<fs::path>& paths) && {
        std::vector<Root> roots;
        for (const fs::path& path : paths) {
            if (store_.access() == StoreAccess::readOnly) {
                problems_.add(path, "cannot be imported while the library is open in another program");
                continue;
            }
            problems_.guard(path, [&] { plan(path, roots); });
        }
        report_.cancelled = options_.stop.stop_requested();  // then the plan has holes
        if (report_.cancelled) roots.clear();
        for (const Root& root : roots) total_ += noteCount(root.pages);
        for (const Root& root : roots) {
            problems_.guard(root.path, [&] { importRoot(root); });
        }
        report_.images = images_.size();
        return std::move(report_);
    }

private:
    struct Root {
        fs::path path;
        bool isFolder = false;
        std::vector<PlannedPage> pages;
    };

    void plan(const fs::path& given, std::vector<Root>& roots) {
        if (given.empty()) return problems_.add(given, "does not exist");
        const fs::path normal = given.lexically_normal();
        const fs::path path = normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
        const FileResult<FileInfo> info = services_.files.info(path);
        if (!info) {
            const bool isMissing = info.error().kind == FileError::Kind::notFound;
            problems_.add(path, isMissing ? "does not exist" : "cannot be read: " + info.error().message);
        } else if (info->kind == FileKind::directory) {
            roots.push_back({path, true, Planner(services_.files, problems_, options_.stop).pagesIn(path)});
        } else if (info->kind != FileKind::file) {
            problems_.add(path, "is neither a file nor a folder");
        } else if (!hasExtension(path, kNoteExtensions)) {
            problems_.add(path, "is no note: only .md, .markdown and .txt can be imported");
        } else {
            roots.push_back({path, false, {{.name = stemOf(path), .note = path, .subpages = {}}}});
        }
    }

    void importRoot(const Root& root) {
        Spot top;
        if (options_.notebook || !root.isFolder) {
            top.isReady = true;
            top.notebook = options_.notebook;
            top.place = index_.topLevel(options_.notebook);
        } else {
            const fs::path name = root.path.filename();
            const bool isNamed = !name.empty() && name != "." && name != "..";
            top.name = nameOf(isNamed ? root.path : services_.files.resolved(root.path));
            if (top.name.empty()) top.name = kUntitledNotebook;
        }
        const fs::path parent = root.path.parent_path();
        const fs::path imageRoot = root.isFolder ? root.path : parent.empty() ? fs::path(".") : parent;
        const ImageSearch search = root.isFolder ? ImageSearch::wholeImported : ImageSearch::nearNote;
        ImageImporter images(store_, services_.files, imageRoot, search);
        importPages(root.pages, top, images);
    }

    void importPages(const std::vector<PlannedPage>& pages, Spot& above, ImageImporter& images) {
        for (const PlannedPage& page : pages) {
            report_.cancelled = report_.cancelled || options_.stop.stop_requested();
            if (report_.cancelled) return;
            Spot spot;
            spot.above = &above;
            spot.name = page.name;
            if (!page.note.empty()) importFile(page, spot, images);
            importPages(page.subpages, spot, images);
        }
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
        spot.place = index_.below(spot.above->place, page.title);
        spot.page = index_.withBody(spot.place, page.body);
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
            StoredImage stored = images.take(image, path.has_parent_path() ? path.parent_path() : fs::path("."));
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
            spot.place = index_.topLevel(spot.notebook);
            spot.isReady = true;
            return {};
        }
        if (auto ready = makeReady(*spot.above); !ready) return ready;
        spot.place = index_.below(spot.above->place, spot.name);
        spot.page = index_.withBody(spot.place, {});
        if (!spot.page) spot.page = index_.first(spot.place);
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
        index_.add(*store_.entries().find(*added), spot.place);
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
    const NoteImportOptions& options_;
    NoteImportReport report_;
    Problems problems_{report_.problems};
    PageIndex index_;
    std::unordered_set<std::string> images_;
    std::size_t done_ = 0;
    std::size_t total_ = 0;
};

}  // namespace

NoteImportReport importNotes(JournalStore& store, const std::vector<fs::path>& paths, const StoreServices& services,
                             const FrontMatterReader& frontMatter, const NoteImportOptions& options) {
    return NoteImporter(store, services, frontMatter, options).run(paths);
}

}  // namespace tessary
