#pragma once

#include <filesystem>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "ai/ai_error.h"
#include "library/journal_store.h"
#include "platform/pdf_reader.h"

namespace tessary {

/// What of a page is read.
enum class SourceChoice {
    whole,       ///< its text and its PDFs
    pages,       ///< its text alone
    highlights,  ///< what is marked in its PDFs
};

/// A page as far as it can be read, taken from the library so that another thread can read it.
struct PageSource {
    std::string body = {};                         ///< plain text
    bool hasMore = false;                          ///< it has content that is no plain text
    std::vector<std::filesystem::path> pdfs = {};  ///< the one it shows first
};

/// Main thread only.
[[nodiscard]] PageSource sourceOf(const JournalEntry& page, const JournalStore& library);

/// The names of a page's PDFs in the PDF folder: the one it shows, then those attached. None twice.
[[nodiscard]] std::vector<std::string> pdfsOf(const JournalEntry& page);

/// Told before each PDF page that is read: its number, from 1, and how many there are in all PDFs of the page.
using ReadingProgress = std::function<void(int page, int pages)>;

/// The raw source text. A PDF's page begins with a line "[Page N]", N from 1, and stands apart by blank lines. A PDF
/// that can't be opened reads as one without text. Fails with a sentence for the user when there is no text at all.
/// Stops between pages.
[[nodiscard]] AIResult<std::string> gatherText(const PageSource& page, SourceChoice choice, PdfReader& pdfs,
                                               const ReadingProgress& progress, std::stop_token stop);

/// What to say when cleaning has left nothing of a page's text.
[[nodiscard]] AIError noTextError(const PageSource& page, SourceChoice choice);

template <>
struct EnumNames<SourceChoice> {
    static constexpr auto names = std::array{
        std::pair{SourceChoice::whole, std::string_view("whole")},
        std::pair{SourceChoice::pages, std::string_view("pages")},
        std::pair{SourceChoice::highlights, std::string_view("highlights")},
    };
};

}  // namespace tessary
