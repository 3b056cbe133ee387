#pragma once

#include <string_view>

#include "library/markdown_note.h"

namespace tessary {

/// A note taken apart at its front matter. Views into the note.
struct NoteHead {
    std::string_view block;  ///< with both "---" lines; empty when there is none
    std::string_view yaml;   ///< between these lines
    std::string_view rest;
};

[[nodiscard]] NoteHead splitNoteHead(std::string_view text);

enum class FrontMatterUse {
    whole,   ///< the note tells all that the front matter does
    partly,  ///< some of it has no place in the note, or cannot be read
};

/// Brings what a page has a place for into `note`. Front matter that cannot be read is a problem of the note.
[[nodiscard]] FrontMatterUse takeFrontMatter(MarkdownNote& note, std::string_view yaml,
                                             const FrontMatterReader& frontMatter, const LocalCalendar& calendar);

}  // namespace tessary
