#include "desktop/shell/sidebar_model.h"

#include <algorithm>

#include "app/welcome.h"

namespace tessary {

SidebarModel::SidebarModel() {
    minutely_.setInterval(std::chrono::minutes(1));
    connect(&minutely_, &QTimer::timeout, this, &SidebarModel::refresh);
}

void SidebarModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    if (desk_ != nullptr) {
        connect(desk_, &Desk::libraryChanged, this, [this] {
            if (!desk_->told().typed) refresh();  // no title or text is shown
        });
        connect(desk_, &Desk::cardsChanged, this, &SidebarModel::refresh);
        minutely_.start();
    }
    Q_EMIT deskChanged();
    refresh();
}

void SidebarModel::refresh() {
    if (desk_ == nullptr) return;
    std::vector<Row> rows;
    for (const Notebook& notebook : desk_->library().notebooks()) {
        rows.push_back({.id = notebook.id, .name = toQml(notebook.name), .color = "#" + toQml(notebook.colorHex)});
    }
    const auto& counts = desk_->due();
    due_ = favorites_ = 0;
    for (const JournalEntry& page : desk_->library().entries()) {
        if (page.isFavorite && !page.isArchived) ++favorites_;
        const auto found = counts.find(page.id);
        if (found == counts.end()) continue;
        due_ += found->second;
        const auto row = page.notebookID ? std::ranges::find(rows, *page.notebookID, &Row::id) : rows.end();
        if (row != rows.end()) row->due += found->second;
    }
    trashed_ = static_cast<int>(desk_->library().trash().size());
    untouched_ = isUntouched(desk_->workspace());
    take(std::move(rows));
    Q_EMIT refreshed();
}

void SidebarModel::take(std::vector<Row> rows) {
    if (!std::ranges::equal(rows, rows_, {}, &Row::id, &Row::id)) {
        beginResetModel();
        rows_ = std::move(rows);
        endResetModel();
        return;
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows_[i] == rows[i]) continue;
        rows_[i] = std::move(rows[i]);
        const QModelIndex changed = index(static_cast<int>(i));
        Q_EMIT dataChanged(changed, changed);
    }
}

int SidebarModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant SidebarModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case NotebookIdRole: return toQml(row.id);
        case NameRole: return row.name;
        case ColorRole: return row.color;
        case DueRole: return row.due;
        default: return {};
    }
}

QHash<int, QByteArray> SidebarModel::roleNames() const {
    return {{NotebookIdRole, "notebookId"}, {NameRole, "name"}, {ColorRole, "color"}, {DueRole, "due"}};
}

QString SidebarModel::makeWelcomeNotebook() {
    const auto made = tessary::makeWelcomeNotebook(desk_->workspace());
    if (made) return toQml(made->notebook);
    desk_->refuse(made.error());
    return {};
}

}  // namespace tessary
