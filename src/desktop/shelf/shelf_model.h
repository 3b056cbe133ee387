#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QVariantMap>
#include <functional>
#include <vector>

#include "desktop/desk/desk.h"

namespace tessary {

/// The notebooks as they stand on the shelf, and after them the loose pages, when there are any, as if they were one.
/// Follows the library and the cards; rows move, come and go one by one.
class ShelfModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(int notebooks READ notebooks NOTIFY summaryChanged)
    Q_PROPERTY(int pages READ pages NOTIFY summaryChanged)
    Q_PROPERTY(int cards READ cards NOTIFY summaryChanged)
    /// Cards that wait for review now.
    Q_PROPERTY(int due READ due NOTIFY summaryChanged)
    /// "10 notebooks · 214 pages · 1,106 cards".
    Q_PROPERTY(QString summary READ summary NOTIFY summaryChanged)
    /// "38 cards are due", and where most of them are.
    Q_PROPERTY(QString dueTitle READ dueTitle NOTIFY summaryChanged)
    Q_PROPERTY(QString dueDetail READ dueDetail NOTIFY summaryChanged)

public:
    enum Role {
        NotebookIdRole = Qt::UserRole,  ///< "loose" for the loose pages
        NameRole,
        SubtitleRole,
        EmojiRole,
        ColorRole,   ///< "#RRGGBB"
        AccentRole,  ///< as `color`, or empty
        MaterialRole,
        PatternRole,
        LabelStyleRole,
        BandRole,
        RibbonRole,
        CoverImageRole,  ///< the path of a picture, or empty
        PagesRole,
        DueRole,
        PinnedRole,
        IsLooseRole,
        PagesTextRole,  ///< "41 pages"
    };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] int notebooks() const { return summary_.notebooks; }
    [[nodiscard]] int pages() const { return summary_.pages; }
    [[nodiscard]] int cards() const { return summary_.cards; }
    [[nodiscard]] int due() const { return summary_.due; }
    [[nodiscard]] QString summary() const;
    [[nodiscard]] QString dueTitle() const;
    [[nodiscard]] QString dueDetail() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    // What is refused is told through the desk; then these give an empty identity or false.

    /// With the look of `restyle`, and an own default for what it leaves out. Gives the notebook's identity.
    Q_INVOKABLE QString create(const QString& name, const QVariantMap& look = {});
    Q_INVOKABLE bool rename(const QString& notebook, const QString& name);
    /// `look` has the keys name, subtitle, emoji, color, accent, material, pattern, labelStyle, band, ribbon and
    /// coverImage as the roles have them; what it leaves out stays. A picture from elsewhere is copied into the
    /// library.
    Q_INVOKABLE bool restyle(const QString& notebook, const QVariantMap& look);
    Q_INVOKABLE bool setPinned(const QString& notebook, bool pinned);
    /// Its pages go to the Trash or become loose.
    Q_INVOKABLE bool remove(const QString& notebook, bool pagesToTrash);
    /// The notebook was opened now: it comes to the front.
    Q_INVOKABLE void noteOpened(const QString& notebook);

    /// The keys of `restyle`; of a notebook to be made when `notebook` is empty.
    Q_INVOKABLE [[nodiscard]] QVariantMap lookOf(const QString& notebook) const;
    /// -1 when it isn't there.
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString& notebook) const;
    /// Looks at the clock anew: cards fall due while nothing changes.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void deskChanged();
    void summaryChanged();

private:
    struct Row {
        Notebook notebook;  ///< its identity is all zero for the loose pages
        int pages = 0;
        int due = 0;

        [[nodiscard]] bool isLoose() const { return notebook.id == NotebookId{}; }
        friend bool operator==(const Row&, const Row&) = default;
    };
    struct Summary {
        int notebooks = 0;
        int pages = 0;
        int cards = 0;
        int due = 0;

        friend bool operator==(const Summary&, const Summary&) = default;
    };
    struct Content {
        std::vector<Row> rows;
        Summary summary;
    };

    [[nodiscard]] Content contentNow() const;
    void take(std::vector<Row> rows);
    void dropMissing(const std::vector<Row>& rows);
    [[nodiscard]] QString coverImage(const Notebook& notebook) const;
    bool applyCoverImage(const QVariantMap& look, Notebook& notebook);
    [[nodiscard]] const Notebook* find(const QString& notebook) const;
    bool change(const QString& notebook, const std::function<void(Notebook&)>& apply);
    bool told(const std::expected<void, Refusal>& done);

    Desk* desk_ = nullptr;
    std::vector<Row> rows_;
    Summary summary_;
};

}  // namespace tessary
