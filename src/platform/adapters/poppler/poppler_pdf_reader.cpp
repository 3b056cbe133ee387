#include "platform/adapters/poppler/poppler_pdf_reader.h"

#include <fcntl.h>
#include <poppler-qt6.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QFile>
#include <utility>

#include "platform/adapters/poppler/page_content.h"

namespace tessary {
namespace {

/// Poppler would report every flaw of a file on stderr.
void silenceErrors() {
    static const bool silenced = [] {
        Poppler::setDebugErrorFunction([](const QString&, const QVariant&) {}, {});
        return true;
    }();
    static_cast<void>(silenced);
}

/// Opened by descriptor, so that any file name will do, and a missing file is told from a damaged one. Null if missing.
std::unique_ptr<QFile> openFile(const std::filesystem::path& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);  // would wait for a pipe's writer
    if (descriptor < 0) return nullptr;
    struct stat status = {};
    auto file = std::make_unique<QFile>();
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
        file->open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        return file;
    }
    ::close(descriptor);
    return nullptr;
}

class PopplerPdfDocument final : public PdfDocument {
public:
    PopplerPdfDocument(std::unique_ptr<QFile> file, std::unique_ptr<Poppler::Document> document)
        : file_(std::move(file)), document_(std::move(document)), pageCount_(document_->numPages()) {}

    [[nodiscard]] int pageCount() const override { return pageCount_; }

    [[nodiscard]] std::string pageText(int page) override {
        const std::unique_ptr<Poppler::Page> loaded = load(page);
        return loaded ? PageContent(*loaded).text() : std::string();
    }

    [[nodiscard]] std::vector<PdfMarkup> pageMarkup(int page) override {
        const std::unique_ptr<Poppler::Page> loaded = load(page);
        return loaded ? PageContent(*loaded).markup() : std::vector<PdfMarkup>();
    }

private:
    /// Null when there is no such page, or it is broken.
    [[nodiscard]] std::unique_ptr<Poppler::Page> load(int page) const {
        if (page < 0 || page >= pageCount_) return nullptr;
        return document_->page(page);
    }

    std::unique_ptr<QFile> file_;  // outlives the document, which reads from it
    std::unique_ptr<Poppler::Document> document_;
    int pageCount_;
};

}  // namespace

std::expected<std::unique_ptr<PdfDocument>, PdfProblem> PopplerPdfReader::open(const std::filesystem::path& file) {
    silenceErrors();
    std::unique_ptr<QFile> content = openFile(file);
    if (!content) return std::unexpected(PdfProblem::missing);
    std::unique_ptr<Poppler::Document> document = Poppler::Document::load(content.get());
    if (!document) return std::unexpected(PdfProblem::damaged);
    // Poppler crashes when it counts the pages of a locked document.
    if (document->isLocked()) return std::unexpected(PdfProblem::encrypted);
    auto opened = std::make_unique<PopplerPdfDocument>(std::move(content), std::move(document));
    if (opened->pageCount() <= 0) return std::unexpected(PdfProblem::damaged);
    return opened;
}

}  // namespace tessary
