#include "desktop/shell/trash_model.h"

#include <set>
#include <utility>

namespace tessary {

void TrashModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    if (desk_ != nullptr) connect(desk_, &Desk::libraryChanged, this, &TrashModel::refresh);
    Q_EMIT deskChanged();
    refresh();
}

void TrashModel::refresh() {
    if (desk_ == nullptr) return;
    const JournalStore& library = desk_->library();
    std::set<std::pair<double, PageId>> deletions;
    for (const TrashedEntry& trashed : library.trash()) deletions.emplace(trashed.deletedAt.seconds, trashed.entry.id);
    std::vector<Row> rows;
    total_ = static_cast<int>(deletions.size());
    for (const TrashedEntry& trashed : library.trash()) {
        // Pages of one deletion stand together, the one that was deleted first.
        const auto& parent = trashed.entry.parentID;
        if (!rows.empty() && parent && deletions.contains({trashed.deletedAt.seconds, *parent})) {
            ++rows.back().subpages;
            continue;
        }
        rows.push_back({.id = trashed.entry.id,
                        .title = trashed.entry.title.empty() ? tr("Untitled") : toQml(trashed.entry.title),
                        .subpages = 0,
                        .daysLeft = library.daysLeft(trashed)});
    }
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
    Q_EMIT refreshed();
}

int TrashModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant TrashModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case PageIdRole: return toQml(row.id);
        case TitleRole: return row.title;
        case SubpagesRole: return row.subpages;
        case DaysLeftRole: return row.daysLeft;
        default: return {};
    }
}

QHash<int, QByteArray> TrashModel::roleNames() const {
    return {{PageIdRole, "pageId"}, {TitleRole, "title"}, {SubpagesRole, "subpages"}, {DaysLeftRole, "daysLeft"}};
}

void TrashModel::restore(const QString& page) {
    if (const auto restored = desk_->library().restore(fromQml<PageId>(page)); !restored)
        desk_->refuse(restored.error());
}

void TrashModel::empty() { desk_->library().emptyTrash(); }

}  // namespace tessary
