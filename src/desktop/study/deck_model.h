#pragma once

#include <QtCore/QAbstractListModel>
#include <unordered_set>

#include "desktop/desk/desk.h"
#include "desktop/desk/inquiry.h"
#include "study/deck_listing.h"

namespace tessary {

/// The cards of one deck, as they are searched, filtered, sorted and picked. Listed on a thread of its own: what is
/// shown stays until the new list is there, and keeps its place where it can. Shares the cards with the store.
class DeckModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// "all", "loose", or a notebook's identity.
    Q_PROPERTY(QString place READ place WRITE setPlace NOTIFY queryChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY queryChanged)
    /// "basic", "cloze", "multipleChoice"; empty for all.
    Q_PROPERTY(QString kind READ kind WRITE setKind NOTIFY queryChanged)
    /// "any", "due", "new", "learning", "suspended", "flagged", "leech".
    Q_PROPERTY(QString state READ state WRITE setState NOTIFY queryChanged)
    /// "due", "newest", "page", "difficulty".
    Q_PROPERTY(QString order READ order WRITE setOrder NOTIFY queryChanged)
    /// False until the first list of this place is there.
    Q_PROPERTY(bool ready READ ready NOTIFY refreshed)
    Q_PROPERTY(QString heading READ heading NOTIFY refreshed)
    Q_PROPERTY(QString color READ color NOTIFY refreshed)
    /// Rows that are shown.
    Q_PROPERTY(int count READ count NOTIFY refreshed)
    // Of the whole deck:
    Q_PROPERTY(int total READ total NOTIFY refreshed)
    Q_PROPERTY(int due READ due NOTIFY refreshed)
    Q_PROPERTY(int fresh READ fresh NOTIFY refreshed)
    Q_PROPERTY(int learning READ learning NOTIFY refreshed)
    Q_PROPERTY(int suspended READ suspended NOTIFY refreshed)
    Q_PROPERTY(int flagged READ flagged NOTIFY refreshed)
    Q_PROPERTY(int leeches READ leeches NOTIFY refreshed)
    /// 0 to 1; negative when no card was reviewed yet.
    Q_PROPERTY(double recall READ recall NOTIFY refreshed)
    Q_PROPERTY(int selected READ selected NOTIFY selectionChanged)

public:
    enum Role {
        CardIdRole = Qt::UserRole,
        KindRole,
        FrontRole,  ///< on one line; of a cloze with its blanks
        BackRole,   ///< on one line
        PageIdRole,
        PageRole,
        DueRole,
        IsDueRole,
        RecallRole,     ///< "93 %"; empty for a new card
        StabilityRole,  ///< "12d"; empty for a new card
        SuspendedRole,
        FlaggedRole,
        SelectedRole,
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString place() const { return place_ ? toQmlPlace() : QStringLiteral("all"); }
    void setPlace(const QString& place);
    [[nodiscard]] QString search() const { return toQml(query_.search); }
    void setSearch(const QString& search);
    [[nodiscard]] QString kind() const;
    void setKind(const QString& kind);
    [[nodiscard]] QString state() const { return toQml(std::string(enumName(query_.state))); }
    void setState(const QString& state);
    [[nodiscard]] QString order() const { return toQml(std::string(enumName(query_.order))); }
    void setOrder(const QString& order);
    [[nodiscard]] bool ready() const { return ready_; }
    [[nodiscard]] QString heading() const;
    [[nodiscard]] QString color() const;
    [[nodiscard]] int count() const { return static_cast<int>(cards_.size()); }
    [[nodiscard]] int total() const { return static_cast<int>(stats_.total); }
    [[nodiscard]] int due() const { return static_cast<int>(stats_.due); }
    [[nodiscard]] int fresh() const { return static_cast<int>(stats_.fresh); }
    [[nodiscard]] int learning() const { return static_cast<int>(stats_.learning); }
    [[nodiscard]] int suspended() const { return static_cast<int>(stats_.suspended); }
    [[nodiscard]] int flagged() const { return static_cast<int>(stats_.flagged); }
    [[nodiscard]] int leeches() const { return static_cast<int>(stats_.leeches); }
    [[nodiscard]] double recall() const { return stats_.averageRecall.value_or(-1); }
    [[nodiscard]] int selected() const { return static_cast<int>(selection_.size()); }
    [[nodiscard]] const std::unordered_set<CardId>& selection() const { return selection_; }
    [[nodiscard]] const std::optional<ShelfItem>& shelfPlace() const { return place_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Picks a row, or lets it go. `extendTo` picks all from the last one that was picked.
    Q_INVOKABLE void toggle(int row);
    Q_INVOKABLE void extendTo(int row);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clearSelection();

    // What is done to one card, or with an empty identity to all that are picked. Each can be taken back by `undo`,
    // until the next.
    Q_INVOKABLE void suspend(const QString& card, bool suspended);
    Q_INVOKABLE void flag(const QString& card, bool flagged);
    Q_INVOKABLE void reset(const QString& card);
    Q_INVOKABLE void remove(const QString& card);
    Q_INVOKABLE void undo();

Q_SIGNALS:
    void deskChanged();
    void queryChanged();
    void refreshed();
    void selectionChanged();
    /// Something was done that can be taken back.
    void done(const QString& sentence);

private:
    [[nodiscard]] QString toQmlPlace() const;
    template <class Value>
    void ask(Value& member, Value value);
    void refresh();
    void take(DeckListing listing);
    void replaceRows(RecordList<Flashcard>::Snapshot cards);
    void pruneSelection();
    void selectionDone(int first, int last);
    [[nodiscard]] std::unordered_set<CardId> meant(const QString& card) const;
    void tell(RecordList<Flashcard>::Snapshot before, const QString& one, const QString& many);
    [[nodiscard]] QVariant textOf(const Flashcard& card, int role) const;

    Desk* desk_ = nullptr;
    std::optional<ShelfItem> place_;
    DeckQuery query_;
    bool ready_ = false;
    RecordList<Flashcard>::Snapshot cards_;
    FlashcardDeckStats stats_;
    std::unordered_set<CardId> selection_;
    int anchor_ = 0;  ///< row that was picked last
    RecordList<Flashcard>::Snapshot before_;  ///< what `undo` brings back
    Inquiry<DeckListing> listing_;
};

}  // namespace tessary
