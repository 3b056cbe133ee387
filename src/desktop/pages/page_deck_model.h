#pragma once

#include <QtCore/QAbstractListModel>

#include "desktop/desk/desk.h"

namespace tessary {

/// The cards of one page.
class PageDeckModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(QString pageId READ pageId WRITE setPageId NOTIFY pageIdChanged)
    Q_PROPERTY(int total READ total NOTIFY refreshed)
    Q_PROPERTY(int due READ due NOTIFY refreshed)
    Q_PROPERTY(int fresh READ fresh NOTIFY refreshed)
    /// 0 to 1; negative when no card was reviewed yet.
    Q_PROPERTY(double recall READ recall NOTIFY refreshed)

public:
    enum Role {
        CardIdRole = Qt::UserRole,
        KindRole,
        FrontRole,
        ShownRole,
        BackRole,
        DueRole,
        IsDueRole,
        SuspendedRole,
        FlaggedRole
    };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString pageId() const { return toQml(page_); }
    void setPageId(const QString& page);
    [[nodiscard]] int total() const { return static_cast<int>(stats_.total); }
    [[nodiscard]] int due() const { return static_cast<int>(stats_.due); }
    [[nodiscard]] int fresh() const { return static_cast<int>(stats_.fresh); }
    [[nodiscard]] double recall() const { return stats_.averageRecall.value_or(-1); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// What is wrong with such a card, as a sentence; empty when nothing is.
    Q_INVOKABLE [[nodiscard]] QString problemWith(const QString& front, const QString& back) const;
    /// A basic card, or a cloze when the front has {{blanks}}.
    Q_INVOKABLE void add(const QString& front, const QString& back);
    /// Texts of a basic card or a cloze.
    Q_INVOKABLE void edit(const QString& card, const QString& front, const QString& back);
    Q_INVOKABLE void remove(const QString& card);
    Q_INVOKABLE void setFlagged(const QString& card, bool flagged);
    Q_INVOKABLE void setSuspended(const QString& card, bool suspended);

Q_SIGNALS:
    void deskChanged();
    void pageIdChanged();
    void refreshed();

private:
    void refresh();
    [[nodiscard]] static CardContent contentFor(const QString& front, const QString& back);

    Desk* desk_ = nullptr;
    PageId page_;
    RecordList<Flashcard>::Snapshot cards_;
    FlashcardDeckStats stats_;
};

}  // namespace tessary
