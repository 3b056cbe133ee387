#pragma once

#include <poppler-qt6.h>

#include <memory>
#include <string>
#include <vector>

namespace tessary {

/// Valid UTF-8 with "\n" for every line break, trimmed.
[[nodiscard]] std::string plainText(const QString& text);

/// The words of a page as it is drawn at the moment of construction, in reading order: a column as a whole before the
/// next one. Poppler's other two orders are of no use for notes and textbooks: the physical layout puts the lines of
/// columns next to each other, the raw order has no spaces.
class PageWords {
public:
    explicit PageWords(const Poppler::Page& page);

    [[nodiscard]] std::string text() const;
    /// What lies in the boxes (in points from the page's upper left corner), trimmed.
    [[nodiscard]] std::string textIn(const std::vector<QRectF>& boxes) const;

private:
    std::vector<std::unique_ptr<Poppler::TextBox>> words_;
};

}  // namespace tessary
