#pragma once

#include <QtCore/QAbstractListModel>

#include "desktop/desk/desk.h"

namespace tessary {

/// The headings of one page's text, as Markdown writes them.
class PageOutline : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(QString pageId READ pageId WRITE setPageId NOTIFY pageIdChanged)
    Q_PROPERTY(int count READ rowCountNow NOTIFY refreshed)

public:
    /// The depth counts from 0 at the page's highest level; the position is that of a character in the text.
    enum Role { TitleRole = Qt::UserRole, DepthRole, PositionRole };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString pageId() const { return toQml(page_); }
    void setPageId(const QString& page);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void deskChanged();
    void pageIdChanged();
    void refreshed();

private:
    struct Row {
        QString title;
        int depth = 0;
        int position = 0;

        friend bool operator==(const Row&, const Row&) = default;
    };

    [[nodiscard]] int rowCountNow() const { return rowCount(); }
    [[nodiscard]] std::vector<Row> rowsNow() const;
    void refresh();

    Desk* desk_ = nullptr;
    PageId page_;
    std::vector<Row> rows_;
};

}  // namespace tessary
