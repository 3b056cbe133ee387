#include "app/library_check.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <unordered_set>

#include "app/library_content.h"
#include "base/text.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

using Kind = LibraryFinding::Kind;
using Severity = LibraryFinding::Severity;
using Findings = std::vector<LibraryFinding>;

constexpr std::string_view kPages = "entries.json";
constexpr std::string_view kTrash = "trash.json";
constexpr std::string_view kNotebooks = "notebooks.json";
constexpr std::string_view kExams = "exams.json";
constexpr std::string_view kCards = "flashcards.json";

enum class Repairable { no, yes };

void addProblem(Findings& findings, Kind kind, std::string_view file, std::string text,
                Repairable repairable = Repairable::no) {
    findings.push_back({.kind = kind,
                        .severity = Severity::problem,
                        .file = std::string(file),
                        .text = std::move(text),
                        .repairable = repairable == Repairable::yes});
}

void addNote(Findings& findings, Kind kind, std::string_view file, std::string text) {
    findings.push_back({.kind = kind, .severity = Severity::note, .file = std::string(file), .text = std::move(text)});
}

// ---- identities ----

template <class T>
void checkDuplicates(const RecordList<T>& records, std::string_view file, std::string_view thing, Findings& findings) {
    for (const Duplicate& duplicate : duplicatesIn(records)) {
        const std::string name = "The " + std::string(thing) + " " + nameOf(records[duplicate.index]);
        addProblem(findings, Kind::duplicateId, file,
                   name + (duplicate.isIdentical ? " stands twice in the file."
                                                 : " has the identity of another " + std::string(thing) + "."),
                   Repairable::yes);
    }
}

void checkLiveAndTrashed(const LibraryContent& library, Findings& findings) {
    for (const TrashedEntry& trashed : library.trash.records) {
        const JournalEntry* const live = library.pages.records.find(trashed.entry.id);
        if (live == nullptr) continue;
        addProblem(findings, Kind::duplicateId, kTrash,
                   "The page " + nameOf(trashed) + " is in the trash and also in the library" +
                       (*live == trashed.entry ? "." : ", with another content."),
                   Repairable::yes);
    }
}

void checkIdentities(const LibraryContent& library, Findings& findings) {
    checkDuplicates(library.pages.records, kPages, "page", findings);
    checkDuplicates(library.trash.records, kTrash, "page", findings);
    checkDuplicates(library.notebooks.records, kNotebooks, "notebook", findings);
    checkDuplicates(library.exams.records, kExams, "exam", findings);
    checkDuplicates(library.cards.records, kCards, "card", findings);
    checkLiveAndTrashed(library, findings);
}

// ---- ties between records ----

void checkParents(const LibraryContent& library, Findings& findings) {
    for (const JournalEntry& page : library.pages.records) {
        if (!page.parentID) continue;
        const JournalEntry* const parent = library.pages.records.find(*page.parentID);
        if (parent == nullptr) {
            const bool trashed = library.trash.records.contains(*page.parentID);
            addProblem(findings, Kind::subpageWithoutParent, kPages,
                       "The parent of the page " + nameOf(page) + (trashed ? " is in the trash." : " is missing."),
                       Repairable::yes);
        } else if (parent->notebookID != page.notebookID) {
            addProblem(findings, Kind::subpageInOtherNotebook, kPages,
                       "The page " + nameOf(page) + " is in another notebook than its parent " + nameOf(*parent) + ".",
                       Repairable::yes);
        }
    }
    for (const ParentLoop& loop : parentLoops(library.pages.records)) {
        std::vector<std::string> names;
        for (const JournalEntry* const page : loop) names.push_back(nameOf(*page));
        addProblem(findings, Kind::parentLoop, kPages,
                   (loop.size() == 1 ? "This page stands inside itself: " : "These pages stand inside each other: ") +
                       joined(names, ", ") + ".",
                   Repairable::yes);
    }
}

void checkNotebooksOfPages(const LibraryContent& library, Findings& findings) {
    if (!library.notebooks.isKnown()) return;
    // Without the whole file there is a chance that it comes back: the ties to it are worth keeping.
    const bool isThere = library.notebooks.state == LibraryContent::State::loaded;
    for (const JournalEntry& page : library.pages.records) {
        if (!page.notebookID || library.notebooks.records.contains(*page.notebookID)) continue;
        addProblem(findings, Kind::pageWithoutNotebook, kPages,
                   "The notebook of the page " + nameOf(page) + " is missing.",
                   isThere ? Repairable::yes : Repairable::no);
    }
}

void checkCards(const LibraryContent& library, Findings& findings) {
    const Repairable repairable = canRecoverCards(library) ? Repairable::yes : Repairable::no;
    for (const auto& [page, count] : cardsWithoutPage(library)) {
        addProblem(findings, Kind::cardWithoutPage, kCards,
                   "The page of " + countOf(count, "card") + " is missing (" + page.toString() + ").", repairable);
    }
}

void checkExams(const LibraryContent& library, Findings& findings) {
    const bool pagesKnown = library.pages.isKnown() && library.trash.isKnown();
    for (const Exam& exam : library.exams.records) {
        if (library.notebooks.isKnown() && !library.notebooks.records.contains(exam.notebookID)) {
            addProblem(findings, Kind::examWithoutNotebook, kExams,
                       "The notebook of the exam " + nameOf(exam) + " is missing.");
        }
        if (!pagesKnown || !exam.pageIDs) continue;
        const auto missing = std::ranges::count_if(*exam.pageIDs, [&](const PageId& page) {
            return !library.pages.records.contains(page) && !library.trash.records.contains(page);
        });
        if (missing == 0) continue;
        addNote(findings, Kind::examPageMissing, kExams,
                "The exam " + nameOf(exam) + " names " + countOf(static_cast<std::size_t>(missing), "page") +
                    " that the library does not have any more.");
    }
}

// ---- media ----

/// One of the folders of media, and who uses what in it.
class MediaFolder {
public:
    MediaFolder(fs::path path, std::string thing, const FileSystem& files, Findings& findings)
        : label_(path.filename().string()), thing_(std::move(thing)), findings_(findings) {
        const FileResult<std::vector<DirectoryEntry>> entries = files.list(path);
        if (!entries && entries.error().kind != FileError::Kind::notFound) {
            isKnown_ = false;
            addProblem(findings_, Kind::unreadableFile, label_, label_ + ": " + entries.error().message);
        }
        if (!entries) return;
        for (const DirectoryEntry& entry : *entries) {
            if (entry.kind == FileKind::file && !entry.name.starts_with('.')) present_.insert(entry.name);
        }
    }

    /// `owner` names what uses the file, at the beginning of a sentence.
    void use(const std::string& name, std::string_view file, const std::string& owner) {
        if (!isPlainFileName(name)) {
            return addProblem(findings_, Kind::badMediaName, file,
                              owner + " names the " + thing_ + " “" + name + "”, which is no file name.");
        }
        used_.insert(name);
        if (!isKnown_ || present_.contains(name)) return;
        addProblem(findings_, Kind::missingMedia, file,
                   owner + " uses the " + thing_ + " “" + name + "”, which is not in the folder " + label_ + ".");
    }

    void reportUnused() const {
        for (const std::string& name : present_) {
            if (used_.contains(name)) continue;
            const std::string path = label_ + "/" + name;
            addNote(findings_, Kind::unusedMedia, path, path + " is not used by anything in the library.");
        }
    }

private:
    std::string label_;
    std::string thing_;
    Findings& findings_;
    bool isKnown_ = true;
    std::set<std::string> present_;
    std::unordered_set<std::string> used_;
};

class MediaCheck {
public:
    MediaCheck(const LibraryFolders& folders, const FileSystem& files, Findings& findings)
        : images_(folders.images(), "image", files, findings),
          audio_(folders.audio(), "recording", files, findings),
          pdfs_(folders.pdfs(), "PDF", files, findings),
          covers_(folders.covers(), "cover", files, findings) {}

    void run(const LibraryContent& library) {
        for (const JournalEntry& page : library.pages.records) use(page, kPages);
        for (const TrashedEntry& trashed : library.trash.records) use(trashed.entry, kTrash);
        for (const Notebook& notebook : library.notebooks.records) {
            if (!notebook.coverImageFilename) continue;
            covers_.use(*notebook.coverImageFilename, kNotebooks, "The notebook " + nameOf(notebook));
        }
        if (!library.pages.isKnown() || !library.trash.isKnown() || !library.notebooks.isKnown()) return;
        for (const MediaFolder* const folder : {&images_, &audio_, &pdfs_, &covers_}) folder->reportUnused();
    }

private:
    void use(const JournalEntry& page, std::string_view file) {
        std::set<std::string> images(page.imageFilenames.begin(), page.imageFilenames.end());
        for (const auto& [name, sticker] : page.imageStickers) images.insert(name);
        std::set<std::string> pdfs(page.pdfAttachments.begin(), page.pdfAttachments.end());
        if (page.pdfFilename) pdfs.insert(*page.pdfFilename);
        if (images.empty() && pdfs.empty() && page.audioClips.empty()) return;
        const std::string owner = "The page " + nameOf(page);
        for (const std::string& name : images) images_.use(name, file, owner);
        for (const std::string& name : pdfs) pdfs_.use(name, file, owner);
        for (const AudioClip& clip : page.audioClips) audio_.use(clip.filename, file, owner);
    }

    MediaFolder images_;
    MediaFolder audio_;
    MediaFolder pdfs_;
    MediaFolder covers_;
};

// ---- other files ----

/// A last line without its end is what a crash leaves: the next rating ends it.
void checkLog(const std::string& name, const std::string& content, const ReadContext& context, Findings& findings) {
    const std::vector<std::string_view> lines = splitLines(content);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool isTorn = i + 1 == lines.size() && !content.ends_with('\n');
        if (isTorn || trimmed(lines[i]).empty()) continue;
        const auto entry = decodeJson<ReviewLogEntry>(std::string(lines[i]), context);
        if (entry) continue;
        addNote(findings, Kind::damagedReviewLog, name,
                entry.error().describe(name + ", line " + std::to_string(i + 1)));
    }
}

void checkReviewLogs(const LibraryFolders& folders, const FileSystem& files, const ReadContext& context,
                     Findings& findings) {
    const std::string label = folders.reviews().filename().string();
    const FileResult<std::vector<DirectoryEntry>> entries = files.list(folders.reviews());
    if (!entries) {
        if (entries.error().kind == FileError::Kind::notFound) return;
        return addProblem(findings, Kind::unreadableFile, label, label + ": " + entries.error().message);
    }
    for (const DirectoryEntry& entry : *entries) {
        if (!entry.name.ends_with(".jsonl")) continue;
        const std::string name = label + "/" + entry.name;
        const FileResult<std::string> content = files.read(folders.reviews() / entry.name);
        if (!content) {
            addProblem(findings, Kind::unreadableFile, name, name + ": " + content.error().message);
        } else {
            checkLog(name, *content, context, findings);
        }
    }
}

void reportPreservedCopies(const LibraryFolders& folders, const FileSystem& files, Findings& findings) {
    const FileResult<std::vector<DirectoryEntry>> entries = files.list(folders.base);
    if (!entries) return;
    for (const DirectoryEntry& entry : *entries) {
        if (entry.kind != FileKind::file || entry.name.find("-corrupt-") == std::string::npos) continue;
        addNote(findings, Kind::preservedCopy, entry.name,
                entry.name + " was kept when a file could not be read. Delete it when you do not need it any more.");
    }
}

}  // namespace

std::vector<LibraryFinding> checkLibrary(const LibraryFolders& folders, const FileSystem& files,
                                         const ReadContext& context) {
    LibraryContent library = loadLibrary(folders, files, context);
    Findings findings = std::move(library.unread);
    checkIdentities(library, findings);
    if (library.pages.isKnown()) checkParents(library, findings);
    checkNotebooksOfPages(library, findings);
    checkCards(library, findings);
    checkExams(library, findings);
    MediaCheck(folders, files, findings).run(library);
    checkReviewLogs(folders, files, context, findings);
    reportPreservedCopies(folders, files, findings);
    return findings;
}

}  // namespace tessary
