#include "platform/adapters/poppler/page_content.h"

#include <poppler-annotation.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tessary {
namespace {

using Annotations = std::vector<std::unique_ptr<Poppler::Annotation>>;

constexpr double kSameLine = 6;  // points between the tops of two marks of one line

/// Annotations with those that hang on them: replies, and the other halves of replacements.
Annotations annotationsOf(const Poppler::Page& page) {
    Annotations all;
    for (auto& annotation : page.annotations()) {
        std::ranges::move(annotation->revisions(), std::back_inserter(all));
        all.push_back(std::move(annotation));
    }
    return all;
}

bool isForReading(const Poppler::Annotation& annotation) {
    return !annotation.flags().testFlag(Poppler::Annotation::Hidden) &&
           annotation.revisionScope() != Poppler::Annotation::Reply;
}

/// Keeps the annotations from being drawn while it lives, but for form fields, whose text belongs to the page. Changes
/// them in memory only.
class HiddenWhileReading {
public:
    explicit HiddenWhileReading(const Annotations& annotations) {
        for (const auto& annotation : annotations) {
            if (annotation->subType() == Poppler::Annotation::AWidget) continue;
            hidden_.emplace_back(annotation.get(), annotation->flags());
            annotation->setFlags(annotation->flags() | Poppler::Annotation::Hidden);
        }
    }
    HiddenWhileReading(const HiddenWhileReading&) = delete;
    HiddenWhileReading& operator=(const HiddenWhileReading&) = delete;
    ~HiddenWhileReading() {
        for (const auto& [annotation, flags] : hidden_) annotation->setFlags(flags);
    }

private:
    std::vector<std::pair<Poppler::Annotation*, Poppler::Annotation::Flags>> hidden_;
};

QRectF scaled(const QRectF& part, const QSizeF& page) {
    return {part.x() * page.width(), part.y() * page.height(), part.width() * page.width(),
            part.height() * page.height()};
}

std::vector<QRectF> boxesOf(const Poppler::HighlightAnnotation& mark, const QSizeF& page) {
    std::vector<QRectF> boxes;
    for (const auto& quad : mark.highlightQuads()) {
        const auto [left, right] = std::ranges::minmax(quad.points, {}, &QPointF::x);
        const auto [top, bottom] = std::ranges::minmax(quad.points, {}, &QPointF::y);
        boxes.push_back(scaled(QRectF(QPointF(left.x(), top.y()), QPointF(right.x(), bottom.y())), page));
    }
    if (boxes.empty()) boxes.push_back(scaled(mark.boundary(), page));
    return boxes;
}

PdfMarkup::Kind kindOf(const Poppler::HighlightAnnotation& mark) {
    switch (mark.highlightType()) {
        case Poppler::HighlightAnnotation::Highlight: return PdfMarkup::Kind::highlight;
        case Poppler::HighlightAnnotation::StrikeOut: return PdfMarkup::Kind::strikeOut;
        case Poppler::HighlightAnnotation::Underline:
        case Poppler::HighlightAnnotation::Squiggly: break;
    }
    return PdfMarkup::Kind::underline;
}

PdfMarkup::Kind kindOf(const Poppler::TextAnnotation& text) {
    return text.textType() == Poppler::TextAnnotation::InPlace ? PdfMarkup::Kind::freeText : PdfMarkup::Kind::note;
}

QPointF startOf(const std::vector<QRectF>& boxes) {
    return std::ranges::min(boxes, {}, [](const QRectF& box) { return std::pair(box.top(), box.left()); }).topLeft();
}

PageWords wordsWithout(const Annotations& annotations, const Poppler::Page& page) {
    const HiddenWhileReading hidden(annotations);
    return PageWords(page);
}

}  // namespace

PageContent::PageContent(const Poppler::Page& page)
    : size_(page.pageSizeF()), annotations_(annotationsOf(page)), words_(wordsWithout(annotations_, page)) {}

std::string PageContent::text() const {
    std::string text = words_.text();
    for (const PdfMarkup& one : markup()) {
        if (one.kind != PdfMarkup::Kind::freeText) continue;
        if (!text.empty()) text += '\n';
        text += one.text;
    }
    return text;
}

std::vector<PdfMarkup> PageContent::markup() const {
    std::vector<Placed> placed;
    for (const auto& annotation : annotations_) {
        if (!isForReading(*annotation)) continue;
        if (std::optional<Placed> one = read(*annotation); one && !one->markup.text.empty()) {
            placed.push_back(std::move(*one));
        }
    }
    sortByPlace(placed);
    std::vector<PdfMarkup> markup;
    std::ranges::transform(placed, std::back_inserter(markup), [](Placed& one) { return std::move(one.markup); });
    return markup;
}

std::optional<PageContent::Placed> PageContent::read(const Poppler::Annotation& annotation) const {
    if (const auto* mark = dynamic_cast<const Poppler::HighlightAnnotation*>(&annotation)) {
        const std::vector<QRectF> boxes = boxesOf(*mark, size_);
        return Placed{{kindOf(*mark), words_.textIn(boxes)}, startOf(boxes)};
    }
    if (const auto* text = dynamic_cast<const Poppler::TextAnnotation*>(&annotation)) {
        return Placed{{kindOf(*text), plainText(text->contents())}, scaled(text->boundary(), size_).topLeft()};
    }
    return std::nullopt;
}

/// From top to bottom, and from left to right those whose tops differ by less than half a line.
void PageContent::sortByPlace(std::vector<Placed>& all) {
    std::ranges::stable_sort(all, {}, [](const Placed& placed) { return placed.start.y(); });
    for (auto line = all.begin(); line != all.end();) {
        const double bottom = line->start.y() + kSameLine;
        const auto next =
            std::find_if(std::next(line), all.end(), [&](const Placed& one) { return one.start.y() >= bottom; });
        std::ranges::stable_sort(line, next, {}, [](const Placed& placed) { return placed.start.x(); });
        line = next;
    }
}

}  // namespace tessary
