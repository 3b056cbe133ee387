#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariantList>

#include "desktop/desk/desk.h"

namespace tessary {

/// One page, open for writing: what is typed is in the library at once, which saves it a moment later.
class PageModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(QString pageId READ pageId WRITE setPageId NOTIFY pageIdChanged)
    /// False when there is no page of this identity (any more).
    Q_PROPERTY(bool exists READ exists NOTIFY changed)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)
    Q_PROPERTY(QString body READ body WRITE setBody NOTIFY changed)
    Q_PROPERTY(QStringList tags READ tags NOTIFY changed)
    Q_PROPERTY(bool favorite READ favorite WRITE setFavorite NOTIFY changed)
    Q_PROPERTY(bool archived READ archived WRITE setArchived NOTIFY changed)
    Q_PROPERTY(QString edited READ edited NOTIFY changed)
    /// From the outermost page inwards, this page left out: maps of "pageId" and "title".
    Q_PROPERTY(QVariantList path READ path NOTIFY changed)
    Q_PROPERTY(QString notebookId READ notebookId NOTIFY changed)
    Q_PROPERTY(QString notebookName READ notebookName NOTIFY changed)
    Q_PROPERTY(QString notebookColor READ notebookColor NOTIFY changed)
    /// Names of PDFs.
    Q_PROPERTY(QStringList attachments READ attachments NOTIFY changed)
    Q_PROPERTY(bool readOnly READ readOnly CONSTANT)

public:
    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString pageId() const { return toQml(id_); }
    void setPageId(const QString& id);

    [[nodiscard]] bool exists() const { return page() != nullptr; }
    [[nodiscard]] QString title() const;
    void setTitle(const QString& title);
    [[nodiscard]] QString body() const;
    void setBody(const QString& body);
    [[nodiscard]] QStringList tags() const;
    [[nodiscard]] bool favorite() const;
    void setFavorite(bool favorite);
    [[nodiscard]] bool archived() const;
    void setArchived(bool archived);
    [[nodiscard]] QString edited() const;
    [[nodiscard]] QVariantList path() const;
    [[nodiscard]] QString notebookId() const;
    [[nodiscard]] QString notebookName() const;
    [[nodiscard]] QString notebookColor() const;
    [[nodiscard]] QStringList attachments() const;
    [[nodiscard]] bool readOnly() const;

    Q_INVOKABLE void addTag(const QString& tag);
    Q_INVOKABLE void removeTag(const QString& tag);
    /// A local file, as a URL.
    Q_INVOKABLE void attach(const QUrl& file);
    /// Cards of what the text holds in question and answer form; tells what came of it.
    Q_INVOKABLE QString makeCardsFromText();
    /// To the trash, with its subpages.
    Q_INVOKABLE void remove();

Q_SIGNALS:
    void deskChanged();
    void pageIdChanged();
    void changed();

private:
    [[nodiscard]] const JournalEntry* page() const;
    [[nodiscard]] const Notebook* notebook() const;
    template <class Change>
    void change(Change apply);

    Desk* desk_ = nullptr;
    PageId id_;
};

}  // namespace tessary
