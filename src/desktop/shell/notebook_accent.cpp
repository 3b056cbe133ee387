#include "desktop/shell/notebook_accent.h"

namespace tessary {

void NotebookAccent::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    if (desk_ != nullptr) connect(desk_, &Desk::libraryChanged, this, &NotebookAccent::changed);
    Q_EMIT changed();
}

QColor NotebookAccent::color() const {
    if (desk_ == nullptr) return {};
    const JournalEntry* const page = desk_->library().entries().find(fromQml<PageId>(page_));
    const auto id = page != nullptr ? page->notebookID : NotebookId::parse(place_.toStdString());
    const Notebook* const notebook = id ? desk_->library().notebooks().find(*id) : nullptr;
    return notebook == nullptr ? QColor() : QColor("#" + toQml(notebook->colorHex));
}

}  // namespace tessary
