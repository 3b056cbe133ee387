#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/date.h"
#include "base/uuid.h"

namespace tessary {

/// A free mark drawn on a page. Coordinates in page points.
struct PageMark {
    enum class Kind { postIt, arrow, circle };

    Uuid id;
    Kind kind = Kind::postIt;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    std::string colorHex = "FFED9E";
    std::string text;
    double fontSize = 13;  ///< points

    friend bool operator==(const PageMark&, const PageMark&) = default;
};

/// How one image of a page is placed.
struct ImageSticker {
    double x = 0;
    double y = 0;
    double width = 0;
    bool aboveText = false;
    std::optional<std::string> originalFilename;  ///< as the image was called when it came in

    friend bool operator==(const ImageSticker&, const ImageSticker&) = default;
};

/// A decorated page title. The member defaults are those of a freshly made style.
struct TitleStyle {
    enum class Preset { classic, editorial, gradient, handwritten, marker, minimal };

    std::string font = "display";
    double size = 40;  ///< points, 12 to 160
    std::string weight = "regular";
    std::string color = "foreground";          ///< a colour name or hex
    std::optional<std::string> gradientEnd;    ///< second colour of a gradient
    std::optional<std::string> marker;         ///< highlighter colour behind the title
    std::string alignment = "leading";
    bool uppercase = false;
    double tracking = -0.5;  ///< letter spacing, points

    friend bool operator==(const TitleStyle&, const TitleStyle&) = default;
};

/// A voice note.
struct AudioClip {
    Uuid id;
    std::string filename;  ///< in the audio folder
    double duration = 0;   ///< seconds
    std::optional<std::string> transcript;

    friend bool operator==(const AudioClip&, const AudioClip&) = default;
};

/// When a page is due for study again.
struct StudyPlan {
    enum class Mode { fixed, spaced };

    Mode mode = Mode::spaced;
    std::int64_t intervalDays = 0;
    Date nextDue;
    std::optional<Date> lastStudied;
    std::int64_t timesStudied = 0;
    std::optional<double> ease;  ///< absent means neutral, 2.5
    std::optional<Date> startedAt;
    std::optional<Date> failedAt;

    friend bool operator==(const StudyPlan&, const StudyPlan&) = default;
};

/// A page.
struct JournalEntry {
    enum class EntryType { journal, note, link, idea };

    PageId id;
    std::string title;
    std::string body;              ///< plain text
    std::optional<Bytes> bodyRTF;  ///< rich text; when present, the editor's authoritative body
    Date date;                     ///< of creation
    std::vector<std::string> tags;
    std::optional<std::string> mood;
    bool isFavorite = false;
    EntryType type = EntryType::note;
    std::optional<Date> expirationDate;
    std::string fontDesign = "default";
    bool isArchived = false;
    std::vector<std::string> imageFilenames;             ///< in the images folder
    std::map<std::string, ImageSticker> imageStickers;   ///< by image file name
    std::vector<PageMark> pageMarks;
    std::vector<AudioClip> audioClips;
    std::optional<NotebookId> notebookID;  ///< absent: a loose page
    std::optional<PageId> parentID;        ///< absent: a top-level page
    std::optional<std::string> colorLabel;
    std::optional<Date> updatedAt;
    std::optional<std::string> pdfFilename;    ///< the PDF that this page shows
    std::vector<std::string> pdfAttachments;   ///< further PDFs, in the pdfs folder
    std::string paperStyle = "plain";
    std::optional<StudyPlan> studyPlan;
    std::optional<TitleStyle> titleStyle;
    std::optional<double> latitude;
    std::optional<double> longitude;
    std::optional<std::string> placeName;
    std::optional<std::string> weatherSymbol;
    std::optional<double> weatherTemp;
    std::optional<std::string> weatherText;

    friend bool operator==(const JournalEntry&, const JournalEntry&) = default;
};

/// A page in the trash, whole, as it was.
struct TrashedEntry {
    JournalEntry entry;
    Date deletedAt;  ///< the same for all pages of one deletion, and different for any two deletions

    friend bool operator==(const TrashedEntry&, const TrashedEntry&) = default;
};

/// The moment of the last edit, or of creation when there was none.
[[nodiscard]] inline Date lastEdited(const JournalEntry& page) { return page.updatedAt.value_or(page.date); }

}  // namespace tessary
