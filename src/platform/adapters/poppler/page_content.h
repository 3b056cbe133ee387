#pragma once

#include <poppler-qt6.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/adapters/poppler/page_words.h"
#include "platform/pdf_reader.h"

namespace tessary {

/// What a page says and what is marked on it. The annotations are kept from being drawn while the words are read: their
/// text would run into the page's, and Poppler never ends when it has to draw a free text that breaks off within a
/// letter.
class PageContent {
public:
    explicit PageContent(const Poppler::Page& page);

    /// The page's own words, then its free texts.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] std::vector<PdfMarkup> markup() const;

private:
    /// A mark and where it begins, in points from the page's upper left corner.
    struct Placed {
        PdfMarkup markup;
        QPointF start;
    };

    [[nodiscard]] std::optional<Placed> read(const Poppler::Annotation& annotation) const;
    static void sortByPlace(std::vector<Placed>& all);

    QSizeF size_;  // points
    std::vector<std::unique_ptr<Poppler::Annotation>> annotations_;
    PageWords words_;
};

}  // namespace tessary
