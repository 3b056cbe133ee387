#include "library/markdown_note.h"

#include "library/markdown_heading.h"
#include "library/markdown_scan.h"
#include "library/note_front_matter.h"

namespace tessary {

MarkdownNote readMarkdownNote(std::string_view text, const FrontMatterReader& frontMatter,
                              const LocalCalendar& calendar) {
    MarkdownNote note;
    const NoteHead head = splitNoteHead(text);
    const bool keepsHead =
        !head.block.empty() && takeFrontMatter(note, head.yaml, frontMatter, calendar) == FrontMatterUse::partly;
    std::string_view rest = withoutOuterBlankLines(head.rest);
    if (const std::optional<Heading> heading = firstHeading(rest)) {
        if (!note.title) note.title = heading->title;
        if (heading->begin == 0 && heading->title == note.title) {
            rest = withoutOuterBlankLines(rest.substr(heading->end));
        }
    }
    if (keepsHead) note.body = std::string(head.block) + (rest.empty() ? "" : "\n\n");
    note.body += rest;
    return note;
}

}  // namespace tessary
