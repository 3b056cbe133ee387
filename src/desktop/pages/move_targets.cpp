#include "desktop/pages/move_targets.h"

#include <algorithm>
#include <unordered_set>

#include "library/page_tree.h"

namespace tessary {

void MoveTargets::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    Q_EMIT deskChanged();
    refresh();
}

void MoveTargets::setPageId(const QString& page) {
    const PageId next = fromQml<PageId>(page);
    if (next == page_) return;
    page_ = next;
    Q_EMIT pageIdChanged();
    refresh();
}

void MoveTargets::setFilter(const QString& filter) {
    if (filter == filter_) return;
    filter_ = filter;
    Q_EMIT filterChanged();
    refresh();
}

void MoveTargets::refresh() {
    beginResetModel();
    rows_ = rowsNow();
    endResetModel();
}

void MoveTargets::appendPlace(std::vector<Row>& rows, const Notebook* notebook,
                              std::vector<const JournalEntry*> pages) const {
    const JournalEntry& moved = *desk_->library().entries().find(page_);
    const auto place = notebook == nullptr ? std::nullopt : std::optional(notebook->id);
    rows.push_back({.target = notebook == nullptr ? "loose" : toQml(notebook->id),
                    .title = notebook == nullptr ? tr("Loose pages") : toQml(notebook->name),
                    .depth = 0,
                    .isPage = false,
                    .color = notebook == nullptr ? QString() : "#" + toQml(notebook->colorHex),
                    .isHere = moved.notebookID == place && !moved.parentID});
    desk_->library().sortForListing(pages,
                                    [this](std::string_view title) { return desk_->ports().text.folded(title); });
    for (const auto& [page, depth] : nestedPages(pages)) {
        rows.push_back({.target = toQml(page->id),
                        .title = page->title.empty() ? tr("Untitled") : toQml(page->title),
                        .depth = static_cast<int>(depth) + 1,
                        .isPage = true,
                        .color = {},
                        .isHere = moved.parentID == page->id});
    }
}

std::vector<MoveTargets::Row> MoveTargets::rowsNow() const {
    if (desk_ == nullptr || !desk_->library().entries().contains(page_)) return {};
    const JournalStore& library = desk_->library();
    const std::vector<PageId> below = library.subpagesOf(page_);
    std::unordered_set<PageId> left(below.begin(), below.end());
    left.insert(page_);
    std::unordered_map<NotebookId, std::vector<const JournalEntry*>> byNotebook;
    std::vector<const JournalEntry*> loose;
    for (const JournalEntry& page : library.entries()) {
        if (page.isArchived || left.contains(page.id)) continue;
        (page.notebookID ? byNotebook[*page.notebookID] : loose).push_back(&page);
    }
    std::vector<Row> rows;
    for (const Notebook& notebook : library.notebooks())
        appendPlace(rows, &notebook, std::move(byNotebook[notebook.id]));
    appendPlace(rows, nullptr, std::move(loose));
    const TextServices& text = desk_->ports().text;
    const std::string wanted = text.folded(filter_.trimmed().toStdString());
    if (!wanted.empty())
        std::erase_if(rows, [&](const Row& row) { return !text.folded(row.title.toStdString()).contains(wanted); });
    return rows;
}

QVariantMap MoveTargets::at(int row) const {
    if (row < 0 || row >= rowCount()) return {};
    const Row& found = rows_[static_cast<std::size_t>(row)];
    return {{"target", found.target}, {"isPage", found.isPage}};
}

int MoveTargets::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant MoveTargets::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case TargetRole: return row.target;
        case TitleRole: return row.title;
        case DepthRole: return row.depth;
        case IsPageRole: return row.isPage;
        case ColorRole: return row.color;
        case HereRole: return row.isHere;
        default: return {};
    }
}

QHash<int, QByteArray> MoveTargets::roleNames() const {
    return {{TargetRole, "target"}, {TitleRole, "title"}, {DepthRole, "depth"},
            {IsPageRole, "isPage"}, {ColorRole, "color"}, {HereRole, "here"}};
}

}  // namespace tessary
