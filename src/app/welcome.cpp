#include "app/welcome.h"

#include <array>

#include "study/note_deck.h"

namespace tessary {
namespace {

constexpr std::string_view kNotebookName = "Welcome to Tessary";

struct WelcomePage {
    std::string_view title;
    std::string_view body;
};

constexpr std::array kPages{
    WelcomePage{
        "Start here",
        R"(Tessary keeps your notes as pages in notebooks, makes cards of them, and brings each card back just before you would forget it.

The cards you are about to see come from these three pages. When you are done, delete this notebook and import your own notes.

Which key shows the answer? :: Space
Which key do you press when you had forgotten the answer? :: 1 (Again)
Which key do you press when you knew the answer? :: 3 (Good)
Which key takes the last rating back? :: u

Everything stays on your computer. The ==trash== keeps deleted pages for {{30}} days.
)"},
    WelcomePage{
        "How memory works",
        R"(Without repetition most of what you learn is gone within days. Hermann Ebbinghaus measured it on himself in 1885 and drew the ==forgetting curve==.

Q: What does the spacing effect say?
A: Repetitions spread over days last longer than the same number in one sitting.

Q: What is active recall?
A: Bringing an answer back from memory instead of reading it again.

Each time you remember something, its {{stability}} grows: the next repetition can wait longer.

When is the best moment to review a card? :: Just before you would forget it
)"},
    WelcomePage{"Notes that become cards", R"(Write as you always do; three ways of writing make cards.

A question and its answer on one line, with two colons between them, or a line that begins with Q and one that begins with A. A sentence with a marked term becomes a sentence with a blank:

A term between two ==equals signs== or in double braces becomes a blank.

What happens to a card when you change its answer in the note? :: The answer is updated and the card keeps its memory
)"},
};

}  // namespace

bool isUntouched(Workspace& workspace) {
    JournalStore& library = workspace.library();
    return workspace.loadProblems().empty() && library.entries().empty() && library.notebooks().empty() &&
           library.trash().empty() && workspace.cards().cards().empty();
}

std::expected<WelcomeNotebook, Refusal> makeWelcomeNotebook(Workspace& workspace) {
    const Date now = workspace.services().clock.now();
    WelcomeNotebook made{.notebook = workspace.library().addNotebook(std::string(kNotebookName))};
    for (const WelcomePage& text : kPages) {
        JournalEntry page;
        page.title = text.title;
        page.body = text.body;
        page.notebookID = made.notebook;
        const std::expected<PageId, Refusal> added = workspace.library().addPage(std::move(page));
        if (!added) return std::unexpected(added.error());
        ++made.pages;
        made.cards += static_cast<std::size_t>(updateDeckFromNote(workspace.cards(), *added, text.body, now).added);
    }
    return made;
}

}  // namespace tessary
