#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "base/json_record.h"
#include "base/uuid.h"

namespace tessary {

/// A section of the navigation.
enum class NavSection { today, journal, archive, favorites };

/// What the page lists are sorted by.
enum class EntrySortMode { created, edited, title };

/// The pseudo-notebook of all pages without a notebook.
struct LoosePages {
    friend bool operator==(LoosePages, LoosePages) = default;
};

/// An entry of the shelf.
using ShelfItem = std::variant<NotebookId, LoosePages>;

/// One selectable mood.
struct MoodItem {
    Uuid id;
    std::string emoji;
    std::string label;

    friend bool operator==(const MoodItem&, const MoodItem&) = default;
};

/// What was studied on one calendar day.
struct StudyDay {
    std::int64_t reviews = 0;
    double seconds = 0;

    friend bool operator==(const StudyDay&, const StudyDay&) = default;
};

/// How well a page was remembered.
enum class StudyRating { forgot, hard, good, easy };

/// "Today", "All Notes", "Archive", "Favorites".
[[nodiscard]] std::string_view sectionTitle(NavSection section);

template <>
struct EnumNames<EntrySortMode> {
    static constexpr auto names = std::array{
        std::pair{EntrySortMode::created, std::string_view("created")},
        std::pair{EntrySortMode::edited, std::string_view("edited")},
        std::pair{EntrySortMode::title, std::string_view("title")},
    };
};

template <>
struct EnumNames<StudyRating> {
    static constexpr auto names = std::array{
        std::pair{StudyRating::forgot, std::string_view("forgot")},
        std::pair{StudyRating::hard, std::string_view("hard")},
        std::pair{StudyRating::good, std::string_view("good")},
        std::pair{StudyRating::easy, std::string_view("easy")},
    };
};

template <>
struct Record<MoodItem> {
    static constexpr auto fields = std::tuple{
        required("id", &MoodItem::id),
        required("emoji", &MoodItem::emoji),
        required("label", &MoodItem::label),
    };
};

template <>
struct Record<StudyDay> {
    static constexpr auto fields = std::tuple{
        withDefault("reviews", &StudyDay::reviews),
        withDefault("seconds", &StudyDay::seconds),
    };
};

}  // namespace tessary
