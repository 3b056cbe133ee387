#include "desktop/search/search_model.h"

#include <algorithm>

#include "desktop/search/page_labels.h"

namespace tessary {

void SearchModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    job_.reset();
    desk_ = desk;
    if (desk_ != nullptr) {
        search_ = std::make_shared<PageSearch>(desk_->ports().text);
        connect(desk_, &Desk::libraryChanged, this, [this] {
            if (!query_.isEmpty()) search();
        });
    }
    Q_EMIT deskChanged();
}

void SearchModel::setQuery(const QString& query) {
    if (query == query_) return;
    query_ = query;
    Q_EMIT queryChanged();
    if (isBlank()) show({}, {});
    search();
}

void SearchModel::warm() {
    if (query_.isEmpty()) search();
}

void SearchModel::search() {
    if (desk_ == nullptr) return;
    isStale_ = job_ != nullptr;
    if (!isStale_) {
        job_ = std::make_unique<Job>(
            desk_->loop(), [this, search = search_, pages = desk_->library().entries().snapshot(),
                            query = query_.toStdString()](const std::stop_token& stop, const Job::Post& post) {
                std::vector<PageHit> hits = search->find(pages, query, PageSearch::kUsualLimit, stop);
                post([this, query, hits = std::move(hits)]() mutable { take(query, std::move(hits)); });
            });
    }
    Q_EMIT searchingChanged();
}

void SearchModel::take(const std::string& query, std::vector<PageHit> hits) {
    job_.reset();
    if (isStale_) search();
    // What was looked for before the query was emptied comes too late.
    if (!isBlank()) show(searchWords(query, desk_->ports().text), std::move(hits));
    Q_EMIT searchingChanged();
}

void SearchModel::show(std::vector<std::string> words, std::vector<PageHit> hits) {
    words_ = std::move(words);
    beginResetModel();
    rows_.clear();
    for (PageHit& hit : hits) {
        // Deleted meanwhile, it is left out.
        if (auto page = desk_->library().entries().share(hit.page)) rows_.push_back({std::move(hit), std::move(page)});
    }
    endResetModel();
    Q_EMIT found();
}

QStringList SearchModel::tagsOf(const JournalEntry& page) const {
    QStringList tags;
    for (const std::string& tag : page.tags) {
        if (!searchMarks(tag, words_, desk_->ports().text).empty()) tags.append(toQml(tag));
    }
    return tags;
}

QVariantList SearchModel::marksIn(const std::string& text) const {
    return toQml(searchMarks(text, words_, desk_->ports().text), text);
}

QString SearchModel::summary() const {
    if (words_.empty()) return {};
    if (rows_.size() == PageSearch::kUsualLimit) return tr("The first %1 pages").arg(rows_.size());
    return rows_.size() == 1 ? tr("1 page") : tr("%1 pages").arg(rows_.size());
}

int SearchModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant SearchModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case PageIdRole: return toQml(row.hit.page);
        case PlaceRole: return placeOf(*row.page);
        case TitleRole: return titleOf(*row.page);
        case TitleMarksRole: return marksIn(row.page->title);
        case ExcerptRole: return toQml(row.hit.excerpt);
        case ExcerptMarksRole: return marksIn(row.hit.excerpt);
        case TagsRole: return tagsOf(*row.page);
        case PathRole: return pathOf(*row.page, desk_->library());
        case ColorRole: return colorOf(*row.page, desk_->library());
        case SectionRole:
            return row.hit.where == PageHit::Where::title ? tr("Titles")
                   : row.hit.where == PageHit::Where::tag ? tr("Tags")
                                                          : tr("Text");
        default: return {};
    }
}

QHash<int, QByteArray> SearchModel::roleNames() const {
    return {{PageIdRole, "pageId"},   {PlaceRole, "place"},    {TitleRole, "title"}, {TitleMarksRole, "titleMarks"},
            {ExcerptRole, "excerpt"}, {TagsRole, "tags"},      {PathRole, "path"},   {ExcerptMarksRole, "excerptMarks"},
            {ColorRole, "color"},     {SectionRole, "section"}};
}

QString SearchModel::pageAt(int row) const {
    return row < 0 || row >= rowCount() ? QString() : toQml(rows_[static_cast<std::size_t>(row)].hit.page);
}

QString SearchModel::placeAt(int row) const {
    return row < 0 || row >= rowCount() ? QString() : placeOf(*rows_[static_cast<std::size_t>(row)].page);
}

}  // namespace tessary
