#include "ai/page_source.h"

#include <algorithm>

#include "base/text.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

/// Each mark is a paragraph: what was marked apart does not belong together.
std::string markupText(PdfDocument& document, int page) {
    std::vector<std::string> marks;
    for (const PdfMarkup& markup : document.pageMarkup(page)) marks.push_back(markup.text);
    return joined(marks, "\n\n");
}

/// The PDFs of a page, opened.
class OpenedPdfs {
public:
    OpenedPdfs(const std::vector<std::filesystem::path>& files, PdfReader& reader) {
        for (const std::filesystem::path& file : files) {
            auto document = reader.open(file);
            if (!document) continue;
            pages_ += (*document)->pageCount();
            documents_.push_back(*std::move(document));
        }
    }

    [[nodiscard]] bool empty() const { return documents_.empty(); }

    /// Appends each page that has something to read; `read` gives its text. Stops where `stop` asks for it.
    void appendTo(std::string& text, const ReadingProgress& progress, const std::stop_token& stop,
                  FunctionRef<std::string(PdfDocument&, int)> read) const {
        int done = 0;
        for (const std::unique_ptr<PdfDocument>& document : documents_) {
            for (int page = 0; page < document->pageCount() && !stop.stop_requested(); ++page) {
                progress(++done, pages_);
                const std::string content = read(*document, page);
                if (trimmed(content).empty()) continue;
                if (!text.empty()) text += "\n\n";
                text += "[Page " + std::to_string(page + 1) + "]\n" + content;
            }
        }
    }

private:
    std::vector<std::unique_ptr<PdfDocument>> documents_;
    int pages_ = 0;
};

AIError noMarksError() { return AIError::unavailable("This PDF has no highlights, underlines or post-its yet."); }

AIError unreadablePdfError() { return AIError::unavailable("Couldn't read any text in this PDF."); }

}  // namespace

std::vector<std::string> pdfsOf(const JournalEntry& page) {
    std::vector<std::string> names;
    if (page.pdfFilename) names.push_back(*page.pdfFilename);
    for (const std::string& name : page.pdfAttachments) {
        if (std::ranges::find(names, name) == names.end()) names.push_back(name);
    }
    return names;
}

PageSource sourceOf(const JournalEntry& page, const JournalStore& library) {
    PageSource source{.body = page.body,
                      .hasMore = page.bodyRTF || !page.imageFilenames.empty() || !page.audioClips.empty(),
                      .pdfs = {}};
    for (const std::string& name : pdfsOf(page)) {
        if (isPlainFileName(name)) source.pdfs.push_back(library.mediaFolder(MediaKind::pdf) / name);
    }
    return source;
}

AIError noTextError(const PageSource& page, SourceChoice choice) {
    if (choice == SourceChoice::highlights) return noMarksError();
    if (choice == SourceChoice::whole && !page.pdfs.empty()) return unreadablePdfError();
    return AIError::unavailable(page.hasMore ? "Couldn't read any text on this page." : "This page has no text yet.");
}

AIResult<std::string> gatherText(const PageSource& page, SourceChoice choice, PdfReader& pdfs,
                                 const ReadingProgress& progress, std::stop_token stop) {
    std::string text;
    if (choice != SourceChoice::highlights) text = trimmed(page.body);
    if (choice != SourceChoice::pages && !page.pdfs.empty()) {
        const OpenedPdfs opened(page.pdfs, pdfs);
        if (choice == SourceChoice::highlights && opened.empty()) return std::unexpected(unreadablePdfError());
        opened.appendTo(text, progress, stop, [choice](PdfDocument& document, int number) {
            return choice == SourceChoice::highlights ? markupText(document, number) : document.pageText(number);
        });
    }
    if (stop.stop_requested()) return std::unexpected(AIError::cancelled());
    if (trimmed(text).empty()) return std::unexpected(noTextError(page, choice));
    return text;
}

}  // namespace tessary
