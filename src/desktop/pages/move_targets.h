#pragma once

#include <QtCore/QAbstractListModel>

#include "desktop/desk/desk.h"

namespace tessary {

/// Where a page can be moved to: each notebook with its pages below it, and the loose pages. The page itself and what
/// stands under it are left out.
class MoveTargets : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// The page that is moved; no targets without one.
    Q_PROPERTY(QString pageId READ pageId WRITE setPageId NOTIFY pageIdChanged)
    /// Only targets whose name holds it.
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)

public:
    /// The target is a page's identity, a notebook's, or "loose"; the page stands there already when it is `here`.
    enum Role { TargetRole = Qt::UserRole, TitleRole, DepthRole, IsPageRole, ColorRole, HereRole };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString pageId() const { return toQml(page_); }
    void setPageId(const QString& page);
    [[nodiscard]] QString filter() const { return filter_; }
    void setFilter(const QString& filter);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// "target" and "isPage" of a row; empty when there is none.
    Q_INVOKABLE [[nodiscard]] QVariantMap at(int row) const;

Q_SIGNALS:
    void deskChanged();
    void pageIdChanged();
    void filterChanged();

private:
    struct Row {
        QString target;
        QString title;
        int depth = 0;
        bool isPage = false;
        QString color;
        bool isHere = false;
    };

    void refresh();
    [[nodiscard]] std::vector<Row> rowsNow() const;
    void appendPlace(std::vector<Row>& rows, const Notebook* notebook, std::vector<const JournalEntry*> pages) const;

    Desk* desk_ = nullptr;
    PageId page_;
    QString filter_;
    std::vector<Row> rows_;
};

}  // namespace tessary
