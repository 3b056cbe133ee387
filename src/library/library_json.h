#pragma once

#include "base/json_record.h"
#include "library/exam.h"
#include "library/notebook.h"
#include "library/page.h"

/// The JSON form of the library's records. Files of every version must load: a key, a default or a tolerance here may
/// be added to, never changed.
namespace tessary {

template <>
struct EnumNames<PageMark::Kind> {
    static constexpr auto names = std::array{
        std::pair{PageMark::Kind::postIt, std::string_view("postIt")},
        std::pair{PageMark::Kind::arrow, std::string_view("arrow")},
        std::pair{PageMark::Kind::circle, std::string_view("circle")},
    };
};

template <>
struct EnumNames<StudyPlan::Mode> {
    static constexpr auto names = std::array{
        std::pair{StudyPlan::Mode::fixed, std::string_view("fixed")},
        std::pair{StudyPlan::Mode::spaced, std::string_view("spaced")},
    };
};

template <>
struct EnumNames<TitleStyle::Preset> {
    static constexpr auto names = std::array{
        std::pair{TitleStyle::Preset::classic, std::string_view("classic")},
        std::pair{TitleStyle::Preset::editorial, std::string_view("editorial")},
        std::pair{TitleStyle::Preset::gradient, std::string_view("gradient")},
        std::pair{TitleStyle::Preset::handwritten, std::string_view("handwritten")},
        std::pair{TitleStyle::Preset::marker, std::string_view("marker")},
        std::pair{TitleStyle::Preset::minimal, std::string_view("minimal")},
    };
};

template <>
struct EnumNames<JournalEntry::EntryType> {
    static constexpr auto names = std::array{
        std::pair{JournalEntry::EntryType::journal, std::string_view("Journal")},
        std::pair{JournalEntry::EntryType::note, std::string_view("Note")},
        std::pair{JournalEntry::EntryType::link, std::string_view("Link")},
        std::pair{JournalEntry::EntryType::idea, std::string_view("Idea")},
    };
};

template <>
struct EnumNames<CoverMaterial> {
    static constexpr auto names = std::array{
        std::pair{CoverMaterial::classic, std::string_view("classic")},
        std::pair{CoverMaterial::cloth, std::string_view("cloth")},
        std::pair{CoverMaterial::leather, std::string_view("leather")},
        std::pair{CoverMaterial::kraft, std::string_view("kraft")},
        std::pair{CoverMaterial::glossy, std::string_view("glossy")},
    };
};

template <>
struct EnumNames<CoverPattern> {
    static constexpr auto names = std::array{
        std::pair{CoverPattern::none, std::string_view("none")},
        std::pair{CoverPattern::lines, std::string_view("lines")},
        std::pair{CoverPattern::grid, std::string_view("grid")},
        std::pair{CoverPattern::dots, std::string_view("dots")},
        std::pair{CoverPattern::stripes, std::string_view("stripes")},
        std::pair{CoverPattern::waves, std::string_view("waves")},
        std::pair{CoverPattern::checks, std::string_view("checks")},
    };
};

template <>
struct EnumNames<CoverLabelStyle> {
    static constexpr auto names = std::array{
        std::pair{CoverLabelStyle::glass, std::string_view("glass")},
        std::pair{CoverLabelStyle::sticker, std::string_view("sticker")},
        std::pair{CoverLabelStyle::embossed, std::string_view("embossed")},
    };
};

template <>
struct Record<PageMark> {
    static constexpr auto fields = std::tuple{
        withComputedDefault("id", &PageMark::id, [](const ReadContext& context) { return context.freshId(); }),
        required("kind", &PageMark::kind),
        withDefault("x", &PageMark::x),
        withDefault("y", &PageMark::y),
        withDefault("width", &PageMark::width),
        withDefault("height", &PageMark::height),
        withDefault("colorHex", &PageMark::colorHex, "FFED9E"),
        withDefault("text", &PageMark::text),
        withDefault("fontSize", &PageMark::fontSize, 13.0),
    };
};

template <>
struct Record<ImageSticker> {
    static constexpr auto fields = std::tuple{
        required("x", &ImageSticker::x),
        required("y", &ImageSticker::y),
        required("width", &ImageSticker::width),
        required("aboveText", &ImageSticker::aboveText),
        optional("originalFilename", &ImageSticker::originalFilename),
    };
};

inline constexpr auto kClampTitleSize = [](double& size) { size = std::clamp(size, 12.0, 160.0); };

// What older files left out is not what a new style starts with.
template <>
struct Record<TitleStyle> {
    static constexpr auto fields = std::tuple{
        withDefault("font", &TitleStyle::font, "default"),
        withDefault("size", &TitleStyle::size, 30.0, kClampTitleSize),
        withDefault("weight", &TitleStyle::weight, "bold"),
        withDefault("color", &TitleStyle::color, "foreground"),
        optional("gradientEnd", &TitleStyle::gradientEnd),
        optional("marker", &TitleStyle::marker),
        withDefault("alignment", &TitleStyle::alignment, "leading"),
        withDefault("uppercase", &TitleStyle::uppercase),
        withDefault("tracking", &TitleStyle::tracking, -0.5),
    };
};

template <>
struct Record<AudioClip> {
    static constexpr auto fields = std::tuple{
        required("id", &AudioClip::id),
        required("filename", &AudioClip::filename),
        required("duration", &AudioClip::duration),
        optional("transcript", &AudioClip::transcript),
    };
};

template <>
struct Record<StudyPlan> {
    static constexpr auto fields = std::tuple{
        required("mode", &StudyPlan::mode),
        required("intervalDays", &StudyPlan::intervalDays),
        required("nextDue", &StudyPlan::nextDue),
        optional("lastStudied", &StudyPlan::lastStudied),
        required("timesStudied", &StudyPlan::timesStudied),
        optional("ease", &StudyPlan::ease),
        optional("startedAt", &StudyPlan::startedAt),
        optional("failedAt", &StudyPlan::failedAt),
    };
};

template <>
struct Record<JournalEntry> {
    static constexpr auto fields = std::tuple{
        required("id", &JournalEntry::id),
        required("title", &JournalEntry::title),
        required("body", &JournalEntry::body),
        optional("bodyRTF", &JournalEntry::bodyRTF),
        required("date", &JournalEntry::date),
        withDefault("tags", &JournalEntry::tags),
        optional("mood", &JournalEntry::mood),
        withDefault("isFavorite", &JournalEntry::isFavorite),
        tolerant("type", &JournalEntry::type, JournalEntry::EntryType::note),
        optional("expirationDate", &JournalEntry::expirationDate),
        withDefault("fontDesign", &JournalEntry::fontDesign, "default"),
        withDefault("isArchived", &JournalEntry::isArchived),
        withDefault("imageFilenames", &JournalEntry::imageFilenames),
        withDefault("audioClips", &JournalEntry::audioClips),
        withDefault("imageStickers", &JournalEntry::imageStickers),
        withDefault("pageMarks", &JournalEntry::pageMarks),
        optional("notebookID", &JournalEntry::notebookID),
        optional("parentID", &JournalEntry::parentID),
        optional("colorLabel", &JournalEntry::colorLabel),
        optional("updatedAt", &JournalEntry::updatedAt),
        optional("latitude", &JournalEntry::latitude),
        optional("longitude", &JournalEntry::longitude),
        optional("placeName", &JournalEntry::placeName),
        optional("weatherSymbol", &JournalEntry::weatherSymbol),
        optional("weatherTemp", &JournalEntry::weatherTemp),
        optional("weatherText", &JournalEntry::weatherText),
        optional("pdfFilename", &JournalEntry::pdfFilename),
        withDefault("pdfAttachments", &JournalEntry::pdfAttachments),
        withDefault("paperStyle", &JournalEntry::paperStyle, "plain"),
        optional("studyPlan", &JournalEntry::studyPlan),
        optional("titleStyle", &JournalEntry::titleStyle),
    };
};

template <>
struct Record<TrashedEntry> {
    static constexpr auto fields = std::tuple{
        required("entry", &TrashedEntry::entry),
        required("deletedAt", &TrashedEntry::deletedAt),
    };
};

template <>
struct Record<Notebook> {
    static constexpr auto fields = std::tuple{
        required("id", &Notebook::id),
        required("name", &Notebook::name),
        withDefault("icon", &Notebook::icon, "folder.fill"),
        withDefault("colorHex", &Notebook::colorHex, "FFDB00"),
        withComputedDefault("createdAt", &Notebook::createdAt, [](const ReadContext& context) { return context.now; }),
        optional("emoji", &Notebook::emoji),
        optional("subtitle", &Notebook::subtitle),
        optional("accentHex", &Notebook::accentHex),
        tolerant("material", &Notebook::material, CoverMaterial::classic),
        tolerant("pattern", &Notebook::pattern, CoverPattern::none),
        tolerant("labelStyle", &Notebook::labelStyle, CoverLabelStyle::glass),
        withDefault("hasBand", &Notebook::hasBand),
        withDefault("hasRibbon", &Notebook::hasRibbon),
        optional("coverImageFilename", &Notebook::coverImageFilename),
        withDefault("isPinned", &Notebook::isPinned),
        optional("lastOpenedAt", &Notebook::lastOpenedAt),
    };
};

template <>
struct Record<Exam> {
    static constexpr auto fields = std::tuple{
        required("id", &Exam::id),
        required("notebookID", &Exam::notebookID),
        required("title", &Exam::title),
        required("date", &Exam::date),
        optional("pageIDs", &Exam::pageIDs),
        optional("calendarEventID", &Exam::calendarEventID),
        required("createdAt", &Exam::createdAt),
    };
};

}  // namespace tessary
