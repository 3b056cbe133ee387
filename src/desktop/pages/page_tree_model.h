#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QSet>
#include <unordered_map>

#include "desktop/desk/desk.h"

namespace tessary {

/// The pages of one place as a tree that can be folded, row by row.
class PageTreeModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// "all", "favorites", "archive", "loose", or a notebook's identity.
    Q_PROPERTY(QString place READ place WRITE setPlace NOTIFY placeChanged)
    /// Only pages whose title holds it; then nothing is folded.
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(QString heading READ heading NOTIFY refreshed)
    /// Empty when there is none.
    Q_PROPERTY(QString firstPage READ firstPage NOTIFY refreshed)

public:
    enum Role { PageIdRole = Qt::UserRole, TitleRole, DepthRole, HasChildrenRole, ExpandedRole, DueRole };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString place() const { return place_; }
    void setPlace(const QString& place);
    [[nodiscard]] QString filter() const { return filter_; }
    void setFilter(const QString& filter);
    [[nodiscard]] QString heading() const { return heading_; }
    [[nodiscard]] QString firstPage() const { return pageAt(0); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void toggle(const QString& page);
    /// A new page in this place, under `parent` when it is one. Gives its identity, empty when refused.
    Q_INVOKABLE QString addPage(const QString& parent);
    /// To the trash, with its subpages.
    Q_INVOKABLE void remove(const QString& page);
    /// Empty: a top-level page.
    Q_INVOKABLE void setParentOf(const QString& page, const QString& parent);
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString& page) const;
    Q_INVOKABLE [[nodiscard]] QString pageAt(int row) const;

Q_SIGNALS:
    void deskChanged();
    void placeChanged();
    void filterChanged();
    void refreshed();

private:
    struct Row {
        PageId id;
        QString title;
        int depth = 0;
        bool hasChildren = false;
        int due = 0;

        friend bool operator==(const Row&, const Row&) = default;
    };

    void refresh();
    [[nodiscard]] std::vector<Row> rowsNow();
    [[nodiscard]] std::vector<const JournalEntry*> pagesHere() const;
    void replaceRows(std::vector<Row> rows);
    [[nodiscard]] std::optional<NotebookId> notebook() const;
    [[nodiscard]] QString headingNow() const;

    Desk* desk_ = nullptr;
    QString place_ = "all";
    QString filter_;
    QString heading_;
    std::vector<Row> rows_;
    QSet<QString> folded_;
};

}  // namespace tessary
