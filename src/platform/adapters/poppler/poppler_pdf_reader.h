#pragma once

#include "platform/pdf_reader.h"

namespace tessary {

/// Reads PDFs with Poppler. Needs no application object. Several documents can be read on several threads at once; each
/// keeps its file open for as long as it lives. A file that opens without a password is readable even when it has an
/// owner's; one without any page is damaged. A page's text ends with its free texts; that of stamps is left out.
///
/// A squiggly line counts as an underline. Links, drawings, stamps, carets, replies and hidden annotations are no
/// markup, nor are remarks attached to a mark. A line break stands where a mark goes on in another line, a space where
/// it leaves out something within one.
class PopplerPdfReader final : public PdfReader {
public:
    [[nodiscard]] std::expected<std::unique_ptr<PdfDocument>, PdfProblem> open(
        const std::filesystem::path& file) override;
};

}  // namespace tessary
