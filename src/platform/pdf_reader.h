#pragma once

#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tessary {

/// Why a PDF can't be read.
enum class PdfProblem {
    missing,    ///< no such file, or it can't be opened
    damaged,    ///< not a PDF, or too broken to read
    encrypted,  ///< needs a password
};

/// Something the user marked on a page.
struct PdfMarkup {
    enum class Kind { highlight, underline, strikeOut, freeText, note };

    Kind kind = Kind::highlight;
    std::string text;  ///< the text under it, or a free text's or note's own; trimmed, never empty
};

/// One opened PDF. One thread at a time.
class PdfDocument {
public:
    virtual ~PdfDocument() = default;
    [[nodiscard]] virtual int pageCount() const = 0;
    /// The text of a page, from 0, its lines in reading order; empty when it has no text layer, or can't be read.
    [[nodiscard]] virtual std::string pageText(int page) = 0;
    /// What is marked on a page, from top to bottom. A text stands in it once: the text under a mark leaves out that of
    /// free-text annotations.
    [[nodiscard]] virtual std::vector<PdfMarkup> pageMarkup(int page) = 0;
};

/// Opens PDFs. Any thread.
class PdfReader {
public:
    virtual ~PdfReader() = default;
    [[nodiscard]] virtual std::expected<std::unique_ptr<PdfDocument>, PdfProblem> open(
        const std::filesystem::path& file) = 0;
};

}  // namespace tessary
