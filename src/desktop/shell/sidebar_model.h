#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QTimer>

#include "desktop/desk/desk.h"

namespace tessary {

/// The notebooks in the sidebar, and the counts beside the places above them.
class SidebarModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(int notebooks READ notebooks NOTIFY refreshed)
    Q_PROPERTY(int favorites READ favorites NOTIFY refreshed)
    /// Cards that wait for review.
    Q_PROPERTY(int due READ due NOTIFY refreshed)
    Q_PROPERTY(int trashed READ trashed NOTIFY refreshed)
    /// Nothing was ever written into this library.
    Q_PROPERTY(bool untouched READ untouched NOTIFY refreshed)

public:
    enum Role { NotebookIdRole = Qt::UserRole, NameRole, ColorRole, DueRole };

    SidebarModel();

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] int notebooks() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] int favorites() const { return favorites_; }
    [[nodiscard]] int due() const { return due_; }
    [[nodiscard]] int trashed() const { return trashed_; }
    [[nodiscard]] bool untouched() const { return untouched_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// A small notebook to try things out with. Gives its identity, empty when it could not be made.
    Q_INVOKABLE QString makeWelcomeNotebook();

Q_SIGNALS:
    void deskChanged();
    void refreshed();

private:
    struct Row {
        NotebookId id;
        QString name;
        QString color;
        int due = 0;

        friend bool operator==(const Row&, const Row&) = default;
    };

    void refresh();
    void take(std::vector<Row> rows);

    Desk* desk_ = nullptr;
    QTimer minutely_;  // cards fall due while nothing changes
    std::vector<Row> rows_;
    int favorites_ = 0;
    int due_ = 0;
    int trashed_ = 0;
    bool untouched_ = false;
};

}  // namespace tessary
