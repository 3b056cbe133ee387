#pragma once

#include <QtCore/QAbstractListModel>

#include "desktop/desk/desk.h"

namespace tessary {

/// What is in the trash: the pages that were deleted by themselves, without those that went along with them.
class TrashModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(int total READ total NOTIFY refreshed)

public:
    enum Role { PageIdRole = Qt::UserRole, TitleRole, SubpagesRole, DaysLeftRole };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    /// All pages, those that went along included.
    [[nodiscard]] int total() const { return total_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void restore(const QString& page);
    Q_INVOKABLE void empty();

Q_SIGNALS:
    void deskChanged();
    void refreshed();

private:
    struct Row {
        PageId id;
        QString title;
        int subpages = 0;
        int daysLeft = 0;
    };

    void refresh();

    Desk* desk_ = nullptr;
    std::vector<Row> rows_;
    int total_ = 0;
};

}  // namespace tessary
