#pragma once

#include <QtCore/QAbstractListModel>
#include <QtQml/QQmlListProperty>
#include <optional>
#include <variant>

#include "desktop/desk/desk.h"
#include "desktop/search/command.h"

namespace tessary {

/// The window's commands, and pages and notebooks to go to, as what is typed stands for them, the best first. While
/// nothing is typed: what was edited last, then the commands in their own order.
class CommandPalette : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_CLASSINFO("DefaultProperty", "commands")
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    Q_PROPERTY(QQmlListProperty<tessary::Command> commands READ commandsForQml CONSTANT)

public:
    enum Role {
        TitleRole = Qt::UserRole,
        MarksRole,    ///< maps of "start" and "length"
        DetailRole,   ///< where a page stands
        IconRole,     ///< empty for a notebook, which has its colour
        ColorRole,    ///< of the notebook; may be empty
        KeyTextRole,  ///< "Ctrl N"
        SectionRole,  ///< "Recent" or "Commands" while nothing is typed
    };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString query() const { return query_; }
    void setQuery(const QString& query);
    QQmlListProperty<Command> commandsForQml() { return {this, &commands_}; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Looks at the library and at what is enabled anew: before the palette opens.
    Q_INVOKABLE void open();
    /// Triggers the row's command or asks for its page or notebook.
    Q_INVOKABLE void run(int row);

Q_SIGNALS:
    void deskChanged();
    void queryChanged();
    void pageChosen(const QString& place, const QString& page);
    void notebookChosen(const QString& notebook);

private:
    /// A page or a notebook.
    struct Place {
        std::variant<PageId, NotebookId> id;
        std::u32string folded;  ///< its title
        Date lastEdited;
    };
    struct Row {
        std::variant<Command*, PageId, NotebookId> target;
        int score = 0;
    };

    [[nodiscard]] std::vector<Row> rowsNow() const;
    [[nodiscard]] std::vector<Row> restingRows() const;
    [[nodiscard]] std::vector<Row> matchingRows(const std::u32string& typed) const;
    [[nodiscard]] std::optional<int> scoreOf(const Command& command, const std::u32string& typed) const;
    [[nodiscard]] std::u32string typed() const;
    [[nodiscard]] std::string titleOfRow(const Row& row) const;
    [[nodiscard]] std::u32string folded(std::string_view text) const;
    [[nodiscard]] QVariantList marksOf(const Row& row) const;
    void refresh();

    Desk* desk_ = nullptr;
    QString query_;
    QList<Command*> commands_;
    std::vector<Place> places_;  ///< the last edited first
    std::vector<Row> rows_;
};

}  // namespace tessary
