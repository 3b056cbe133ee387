#include "support/pdf_maker.h"

#include <fmt/format.h>

#include <cstddef>
#include <string_view>
#include <utility>

#include "base/text.h"

namespace tessary {
namespace {

constexpr std::size_t kFixedObjects = 3;  // the catalog, the list of pages, the font
constexpr std::size_t kObjectsPerPage = 2;

std::string escaped(std::string_view line) {
    std::string result;
    for (const char letter : line) {
        if (letter == '(' || letter == ')' || letter == '\\') result += '\\';
        result += letter;
    }
    return result;
}

std::string pageContent(const std::string& text) {
    std::string content = "BT /F1 12 Tf 15 TL 60 780 Td\n";
    for (const std::string_view line : splitLines(text)) content += fmt::format("({}) Tj T*\n", escaped(line));
    return content + "ET";
}

/// The file so far, and where each object of it begins.
class PdfText {
public:
    void addObject(std::string_view body) {
        starts_.push_back(text_.size());
        text_ += fmt::format("{} 0 obj\n{}\nendobj\n", starts_.size(), body);
    }

    [[nodiscard]] std::string finished() && {
        const std::size_t table = text_.size();
        text_ += fmt::format("xref\n0 {}\n0000000000 65535 f \n", starts_.size() + 1);
        for (const std::size_t start : starts_) text_ += fmt::format("{:010} 00000 n \n", start);
        text_ += fmt::format("trailer\n<< /Size {} /Root 1 0 R >>\nstartxref\n{}\n%%EOF\n", starts_.size() + 1, table);
        return std::move(text_);
    }

private:
    std::string text_ = "%PDF-1.4\n";
    std::vector<std::size_t> starts_;
};

}  // namespace

std::string makePdf(const std::vector<std::string>& pages) {
    std::string kids;
    for (std::size_t i = 0; i < pages.size(); ++i)
        kids += fmt::format("{} 0 R ", kFixedObjects + 1 + i * kObjectsPerPage);
    PdfText pdf;
    pdf.addObject("<< /Type /Catalog /Pages 2 0 R >>");
    pdf.addObject(fmt::format("<< /Type /Pages /Count {} /Kids [ {}] /MediaBox [0 0 595 842] >>", pages.size(), kids));
    pdf.addObject("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    for (std::size_t i = 0; i < pages.size(); ++i) {
        pdf.addObject(
            fmt::format("<< /Type /Page /Parent 2 0 R /Resources << /Font << /F1 3 0 R >> >> /Contents {} 0 R >>",
                        kFixedObjects + kObjectsPerPage * (i + 1)));
        const std::string content = pageContent(pages[i]);
        pdf.addObject(fmt::format("<< /Length {} >>\nstream\n{}\nendstream", content.size(), content));
    }
    return std::move(pdf).finished();
}

}  // namespace tessary
