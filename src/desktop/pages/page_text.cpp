#include "desktop/pages/page_text.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <algorithm>

#include "desktop/pages/page_marks.h"

namespace tessary {

PageText::PageText(QObject* parent) : QObject(parent) {}
PageText::~PageText() = default;

void PageText::setDocument(QQuickTextDocument* document) {
    if (document == document_) return;
    if (document_) document_->textDocument()->disconnect(this);
    document_ = document;
    marks_.reset();
    if (document_) {
        marks_ = std::make_unique<PageMarks>(document_->textDocument());
        marks_->setColors(faint_, highlight_);
        connect(document_->textDocument(), &QTextDocument::contentsChanged, this, &PageText::look);
        // The document goes with its editor, and takes what hangs on it along.
        connect(document_->textDocument(), &QObject::destroyed, this, [this] { static_cast<void>(marks_.release()); });
    }
    Q_EMIT documentChanged();
}

QColor PageText::faint() const { return faint_; }
QColor PageText::highlight() const { return highlight_; }

void PageText::setFaint(const QColor& color) {
    faint_ = color;
    if (marks_) marks_->setColors(faint_, highlight_);
    Q_EMIT lookChanged();
}

void PageText::setHighlight(const QColor& color) {
    highlight_ = color;
    if (marks_) marks_->setColors(faint_, highlight_);
    Q_EMIT lookChanged();
}

void PageText::load(const QString& text) {
    if (!document_) return;
    QTextDocument& document = *document_->textDocument();
    document.setUndoRedoEnabled(false);
    document.setPlainText(text);
    applyLineHeight();
    document.setUndoRedoEnabled(true);
}

/// A new paragraph takes the format of the one it is split from, so that once for each text is enough.
void PageText::applyLineHeight() {
    QTextBlockFormat format;
    format.setLineHeight(lineHeight_, QTextBlockFormat::FixedHeight);
    QTextCursor cursor(document_->textDocument());
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(format);
}

// ---- find -------------------------------------------------------------------------------------------------------

void PageText::setWanted(const QString& wanted) {
    if (wanted == wanted_) return;
    wanted_ = wanted;
    if (marks_) marks_->setWanted(wanted);
    look();
}

void PageText::look() {
    std::vector<int> places;
    if (document_ && !wanted_.isEmpty()) {
        const QString text = document_->textDocument()->toPlainText();
        for (qsizetype at = text.indexOf(wanted_, 0, Qt::CaseInsensitive); at >= 0;
             at = text.indexOf(wanted_, at + wanted_.size(), Qt::CaseInsensitive)) {
            places.push_back(static_cast<int>(at));
        }
    }
    if (places == places_ && (current_ >= 0) == !places.empty()) return;
    places_ = std::move(places);
    current_ = std::min(current_, found() - 1);
    Q_EMIT foundChanged();
}

void PageText::show(int place) {
    current_ = place;
    Q_EMIT foundChanged();
}

int PageText::next(int position) {
    if (places_.empty()) return -1;
    const auto next = std::ranges::lower_bound(places_, position);
    show(next == places_.end() ? 0 : static_cast<int>(next - places_.begin()));
    return places_[static_cast<std::size_t>(current_)];
}

int PageText::previous(int position) {
    if (places_.empty()) return -1;
    const auto next = std::ranges::lower_bound(places_, position);
    show(static_cast<int>(next == places_.begin() ? places_.end() - places_.begin() : next - places_.begin()) - 1);
    return places_[static_cast<std::size_t>(current_)];
}

}  // namespace tessary
