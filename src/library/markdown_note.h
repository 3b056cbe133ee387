#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "platform/front_matter.h"

/// Markdown as other programs write it, taken apart for the library. Texts are UTF-8 with "\n" as line end. Pure
/// functions, any thread. The time is linear in the text, whatever the text is.
namespace tessary {

struct MarkdownNote {
    std::optional<std::string> title;  ///< of the front matter, else the first heading as plain text
    /// Without the heading that gave the title, if nothing stands before it, and without front matter that is wholly
    /// told by the other members.
    std::string body;
    std::vector<std::string> tags;  ///< without "#", each once
    std::optional<Date> date;
    std::optional<Date> updatedAt;
    std::vector<std::string> problems;  ///< for the user; each goes on after the name of the note
};

/// Dates of the front matter that name no zone are meant in the zone of `calendar`.
[[nodiscard]] MarkdownNote readMarkdownNote(std::string_view text, const FrontMatterReader& frontMatter,
                                            const LocalCalendar& calendar);

}  // namespace tessary
