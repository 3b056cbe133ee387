#pragma once

#include <QtCore/QAbstractListModel>

#include "ai/job.h"
#include "desktop/desk/desk.h"
#include "library/page_search.h"

namespace tessary {

/// The pages that a query finds, while it is typed. Searches run on a thread of their own, one at a time: what is typed
/// meanwhile is looked for next. What was found stays until there is something newer.
class SearchModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    /// Whether what is shown is not yet of the query.
    Q_PROPERTY(bool searching READ searching NOTIFY searchingChanged)
    /// "3 pages", "The first 100 pages"; empty while nothing was looked for.
    Q_PROPERTY(QString summary READ summary NOTIFY found)

public:
    enum Role {
        PageIdRole = Qt::UserRole,
        PlaceRole,  ///< as `Navigator::openPage` takes it
        TitleRole,
        TitleMarksRole,  ///< maps of "start" and "length"
        ExcerptRole,  ///< may be empty
        ExcerptMarksRole,  ///< maps of "start" and "length"
        TagsRole,  ///< those that hold a word of the query
        PathRole,  ///< "Cell Biology › Energy in cells"
        ColorRole,  ///< of the notebook; empty without one
        SectionRole,  ///< "Titles", "Tags" or "Text"
    };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString query() const { return query_; }
    void setQuery(const QString& query);
    [[nodiscard]] bool searching() const { return job_ != nullptr && !isBlank(); }
    [[nodiscard]] QString summary() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Prepares the first search in the background, so that it answers as fast as all others.
    Q_INVOKABLE void warm();
    Q_INVOKABLE [[nodiscard]] QString pageAt(int row) const;
    Q_INVOKABLE [[nodiscard]] QString placeAt(int row) const;

Q_SIGNALS:
    void deskChanged();
    void queryChanged();
    void searchingChanged();
    void found();

private:
    struct Row {
        PageHit hit;
        std::shared_ptr<const JournalEntry> page;  ///< as it was found
    };

    void search();
    void take(const std::string& query, std::vector<PageHit> hits);
    void show(std::vector<std::string> words, std::vector<PageHit> hits);
    [[nodiscard]] bool isBlank() const { return query_.trimmed().isEmpty(); }
    [[nodiscard]] QVariantList marksIn(const std::string& text) const;
    [[nodiscard]] QStringList tagsOf(const JournalEntry& page) const;

    Desk* desk_ = nullptr;
    QString query_;
    std::vector<Row> rows_;
    std::vector<std::string> words_;  ///< that found the rows
    bool isStale_ = false;  ///< query or library have changed since the search that runs began
    std::shared_ptr<PageSearch> search_;
    std::unique_ptr<Job> job_;
};

}  // namespace tessary
