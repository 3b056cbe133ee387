#include "desktop/pages/page_outline.h"

#include <algorithm>

#include "library/markdown_heading.h"

namespace tessary {

void PageOutline::setDesk(Desk* desk) {
    if (desk == desk_) return;
    if (desk_ != nullptr) desk_->disconnect(this);
    desk_ = desk;
    if (desk_ != nullptr) connect(desk_, &Desk::libraryChanged, this, &PageOutline::refresh);
    Q_EMIT deskChanged();
    refresh();
}

void PageOutline::setPageId(const QString& page) {
    const PageId next = fromQml<PageId>(page);
    if (next == page_) return;
    page_ = next;
    Q_EMIT pageIdChanged();
    refresh();
}

std::vector<PageOutline::Row> PageOutline::rowsNow() const {
    const JournalEntry* const page = desk_ == nullptr ? nullptr : desk_->library().entries().find(page_);
    if (page == nullptr) return {};
    const std::string_view body = page->body;
    const std::vector<Heading> headings = allHeadings(body);
    const auto highest = std::ranges::min_element(headings, {}, &Heading::level);
    std::vector<Row> rows;
    std::size_t bytes = 0;
    qsizetype characters = 0;
    for (const Heading& heading : headings) {
        const std::string_view between = body.substr(bytes, heading.begin - bytes);
        characters += QString::fromUtf8(between.data(), static_cast<qsizetype>(between.size())).size();
        bytes = heading.begin;
        rows.push_back({.title = toQml(heading.title),
                        .depth = heading.level - highest->level,
                        .position = static_cast<int>(characters)});
    }
    return rows;
}

/// While its text is typed in, headings mostly just shift.
void PageOutline::refresh() {
    std::vector<Row> rows = rowsNow();
    if (rows == rows_) return;
    if (rows.size() == rows_.size()) {
        rows_ = std::move(rows);
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
        return;
    }
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
    Q_EMIT refreshed();
}

int PageOutline::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant PageOutline::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case TitleRole: return row.title;
        case DepthRole: return row.depth;
        case PositionRole: return row.position;
        default: return {};
    }
}

QHash<int, QByteArray> PageOutline::roleNames() const {
    return {{TitleRole, "title"}, {DepthRole, "depth"}, {PositionRole, "position"}};
}

}  // namespace tessary
