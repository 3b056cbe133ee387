#pragma once

#include <string>
#include <vector>

#include "base/json_record.h"
#include "library/library_folders.h"
#include "platform/file_system.h"

namespace tessary {

/// One thing that is not as it should be in a library's folder.
struct LibraryFinding {
    enum class Kind {
        unreadableFile,           ///< there, but cannot be opened
        undecodableFile,          ///< its content is not what it should be
        duplicateId,              ///< one identity twice in a file, or both live and in the trash
        subpageWithoutParent,     ///< the parent is not among the live pages
        subpageInOtherNotebook,   ///< than its parent
        parentLoop,               ///< pages that stand inside each other
        pageWithoutNotebook,      ///< its notebook is not there
        cardWithoutPage,          ///< the page is neither live nor in the trash
        examWithoutNotebook,
        examPageMissing,
        missingMedia,
        badMediaName,             ///< no plain file name
        unusedMedia,
        damagedReviewLog,
        preservedCopy,            ///< left from a file that could not be decoded at some start
    };
    enum class Severity {
        problem,
        note,  ///< worth knowing, nothing is broken
    };

    Kind kind = Kind::undecodableFile;
    Severity severity = Severity::problem;
    std::string file;         ///< inside the library's folder, as in "entries.json"
    std::string text;         ///< a sentence for the user
    bool repairable = false;  ///< by `repairLibrary`

    friend bool operator==(const LibraryFinding&, const LibraryFinding&) = default;
};

/// Reads every file of a library and says what is wrong. Nothing is written. What depends on a file that cannot be
/// read is left out; a file that is missing counts as empty. Any thread.
/// `context` is what decoding needs: dates in the library's own form.
[[nodiscard]] std::vector<LibraryFinding> checkLibrary(const LibraryFolders& folders, const FileSystem& files,
                                                       const ReadContext& context);

template <>
struct EnumNames<LibraryFinding::Kind> {
    static constexpr auto names = std::array{
        std::pair{LibraryFinding::Kind::unreadableFile, std::string_view("unreadableFile")},
        std::pair{LibraryFinding::Kind::undecodableFile, std::string_view("undecodableFile")},
        std::pair{LibraryFinding::Kind::duplicateId, std::string_view("duplicateId")},
        std::pair{LibraryFinding::Kind::subpageWithoutParent, std::string_view("subpageWithoutParent")},
        std::pair{LibraryFinding::Kind::subpageInOtherNotebook, std::string_view("subpageInOtherNotebook")},
        std::pair{LibraryFinding::Kind::parentLoop, std::string_view("parentLoop")},
        std::pair{LibraryFinding::Kind::pageWithoutNotebook, std::string_view("pageWithoutNotebook")},
        std::pair{LibraryFinding::Kind::cardWithoutPage, std::string_view("cardWithoutPage")},
        std::pair{LibraryFinding::Kind::examWithoutNotebook, std::string_view("examWithoutNotebook")},
        std::pair{LibraryFinding::Kind::examPageMissing, std::string_view("examPageMissing")},
        std::pair{LibraryFinding::Kind::missingMedia, std::string_view("missingMedia")},
        std::pair{LibraryFinding::Kind::badMediaName, std::string_view("badMediaName")},
        std::pair{LibraryFinding::Kind::unusedMedia, std::string_view("unusedMedia")},
        std::pair{LibraryFinding::Kind::damagedReviewLog, std::string_view("damagedReviewLog")},
        std::pair{LibraryFinding::Kind::preservedCopy, std::string_view("preservedCopy")},
    };
};

template <>
struct EnumNames<LibraryFinding::Severity> {
    static constexpr auto names = std::array{
        std::pair{LibraryFinding::Severity::problem, std::string_view("problem")},
        std::pair{LibraryFinding::Severity::note, std::string_view("note")},
    };
};

template <>
struct Record<LibraryFinding> {
    static constexpr auto fields = std::tuple{
        required("kind", &LibraryFinding::kind),
        required("severity", &LibraryFinding::severity),
        required("file", &LibraryFinding::file),
        required("text", &LibraryFinding::text),
        withDefault("repairable", &LibraryFinding::repairable),
    };
};

}  // namespace tessary
