#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QUrl>

#include "desktop/desk/desk.h"

namespace tessary {

/// The files of one page: the PDF it shows, further PDFs, pictures, voice notes.
class PageAttachments : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(QString pageId READ pageId WRITE setPageId NOTIFY pageIdChanged)
    Q_PROPERTY(int count READ rowCountNow NOTIFY refreshed)

public:
    enum Role { NameRole = Qt::UserRole, KindRole, DetailRole, MissingRole };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString pageId() const { return toQml(page_); }
    void setPageId(const QString& page);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Copies a local PDF into the library and ties it to the page.
    Q_INVOKABLE void attach(const QUrl& file);
    /// With the program the system has for such files.
    Q_INVOKABLE void open(int row);
    /// Off the page; the file stays, and the desk offers to put it back.
    Q_INVOKABLE void remove(int row);
    /// Looks again whether the files are there.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void deskChanged();
    void pageIdChanged();
    void refreshed();

private:
    enum class Kind { pdf, image, audio };

    struct Row {
        std::string name;
        Kind kind = Kind::pdf;

        friend bool operator==(const Row&, const Row&) = default;
    };
    struct File {
        std::optional<std::uint64_t> size;  ///< bytes; absent when it is not there

        friend bool operator==(const File&, const File&) = default;
    };

    [[nodiscard]] int rowCountNow() const { return rowCount(); }
    [[nodiscard]] static std::vector<Row> rowsOf(const JournalEntry& page);
    [[nodiscard]] std::filesystem::path pathOf(const Row& row) const;
    [[nodiscard]] const JournalEntry* page() const;
    void followLibrary();

    Desk* desk_ = nullptr;
    PageId page_;
    std::vector<Row> rows_;
    std::vector<File> files_;
};

}  // namespace tessary
