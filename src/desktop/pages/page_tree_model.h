#pragma once

#include <QtCore/QAbstractListModel>

#include "desktop/pages/page_tree_rows.h"

namespace tessary {

/// The pages of one place as a tree that can be folded and rearranged, row by row. What is moved or deleted can be
/// undone through the desk.
class PageTreeModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// "all", "favorites", "archive", "loose", or a notebook's identity.
    Q_PROPERTY(QString place READ place WRITE setPlace NOTIFY placeChanged)
    /// Only pages whose title holds it; then nothing is folded.
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    /// Only pages that have it; then nothing is folded.
    Q_PROPERTY(QString tag READ tag WRITE setTag NOTIFY tagChanged)
    Q_PROPERTY(QString heading READ heading NOTIFY refreshed)
    /// Of the place's notebook as "#RRGGBB"; empty for any other place.
    Q_PROPERTY(QString color READ color NOTIFY refreshed)
    /// Empty when there is none.
    Q_PROPERTY(QString firstPage READ firstPage NOTIFY refreshed)

public:
    enum Role {
        PageIdRole = Qt::UserRole,
        TitleRole,
        DepthRole,
        HasChildrenRole,
        ExpandedRole,
        DueRole,
        PinnedRole,
        FavoriteRole,
        ArchivedRole,
        ExpiredRole
    };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString place() const { return query_.place; }
    void setPlace(const QString& place);
    [[nodiscard]] QString filter() const { return query_.filter; }
    void setFilter(const QString& filter);
    [[nodiscard]] QString tag() const { return query_.tag; }
    void setTag(const QString& tag);
    [[nodiscard]] QString heading() const { return heading_; }
    [[nodiscard]] QString color() const { return color_; }
    [[nodiscard]] QString firstPage() const { return pageAt(0); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE [[nodiscard]] int rowOf(const QString& page) const;
    Q_INVOKABLE [[nodiscard]] QString pageAt(int row) const;
    /// In the library, whether it is listed here or not.
    Q_INVOKABLE [[nodiscard]] bool exists(const QString& page) const;

    Q_INVOKABLE void toggle(const QString& page);
    /// Does nothing to a page that is so already.
    Q_INVOKABLE void setExpanded(const QString& page, bool expanded);
    /// A new page in this place, under `parent` when it is one. Gives its identity, empty when refused.
    Q_INVOKABLE QString addPage(const QString& parent);
    /// To the trash, with its subpages.
    Q_INVOKABLE void remove(const QString& page);
    Q_INVOKABLE void setPinned(const QString& page, bool pinned);
    Q_INVOKABLE void setFavorite(const QString& page, bool favorite);
    Q_INVOKABLE void setArchived(const QString& page, bool archived);

    /// Whether the page can become a subpage of `parent`; an empty one stands for the top level.
    Q_INVOKABLE [[nodiscard]] bool canStandUnder(const QString& page, const QString& parent) const;
    /// Empty: a top-level page.
    Q_INVOKABLE void setParentOf(const QString& page, const QString& parent);
    /// Empty or "loose": to the loose pages. A top-level page there.
    Q_INVOKABLE void moveToNotebook(const QString& page, const QString& notebook);
    /// Under the page above it that stands as deep.
    Q_INVOKABLE void moveIn(const QString& page);
    /// Beside the page it stands under.
    Q_INVOKABLE void moveOut(const QString& page);

Q_SIGNALS:
    void deskChanged();
    void placeChanged();
    void filterChanged();
    void tagChanged();
    void refreshed();

private:
    void refresh();
    void followLibrary();
    [[nodiscard]] bool showsAlready(PageId page) const;
    void replaceRows(std::vector<PageTreeRow> rows);
    [[nodiscard]] const JournalEntry* find(const QString& page) const;
    [[nodiscard]] QString headingNow() const;
    template <class Change>
    void change(const QString& page, Change apply);
    /// Moves, unfolds the new parent, and offers to put everything back.
    template <class Move>
    void moveWithUndo(const QString& page, Move move);
    [[nodiscard]] QString whereIs(PageId page) const;

    Desk* desk_ = nullptr;
    PageTreeQuery query_;
    QString heading_;
    QString color_;
    std::vector<PageTreeRow> rows_;
    std::vector<PageId> pinned_;
    RecordList<JournalEntry>::Snapshot shown_;  ///< the library as the rows show it
};

}  // namespace tessary
