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
    /// Maps of "name" and "color", as "#RRGGBB" or empty.
    Q_PROPERTY(QVariantList tags READ tags NOTIFY changed)
    Q_PROPERTY(QStringList tagNames READ tagNames NOTIFY changed)
    /// Of the text.
    Q_PROPERTY(int words READ words NOTIFY changed)
    /// "YYYY-MM-DD", or empty.
    Q_PROPERTY(QString expiryDay READ expiryDay NOTIFY changed)
    /// "Expires 3 Dec"; empty without a day.
    Q_PROPERTY(QString expiryText READ expiryText NOTIFY changed)
    /// Today or before.
    Q_PROPERTY(bool expired READ expired NOTIFY changed)
    Q_PROPERTY(bool favorite READ favorite WRITE setFavorite NOTIFY changed)
    /// Before all others in lists.
    Q_PROPERTY(bool pinned READ pinned NOTIFY changed)
    Q_PROPERTY(bool archived READ archived WRITE setArchived NOTIFY changed)
    Q_PROPERTY(QString edited READ edited NOTIFY changed)
    /// From the outermost page inwards, this page left out: maps of "pageId" and "title".
    Q_PROPERTY(QVariantList path READ path NOTIFY changed)
    Q_PROPERTY(QString notebookId READ notebookId NOTIFY changed)
    Q_PROPERTY(QString notebookName READ notebookName NOTIFY changed)
    Q_PROPERTY(QString notebookColor READ notebookColor NOTIFY changed)
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
    [[nodiscard]] QVariantList tags() const;
    [[nodiscard]] QStringList tagNames() const;
    [[nodiscard]] int words() const;
    [[nodiscard]] QString expiryDay() const;
    [[nodiscard]] QString expiryText() const;
    [[nodiscard]] bool expired() const;
    [[nodiscard]] bool favorite() const;
    void setFavorite(bool favorite);
    [[nodiscard]] bool pinned() const;
    [[nodiscard]] bool archived() const;
    void setArchived(bool archived);
    [[nodiscard]] QString edited() const;
    [[nodiscard]] QVariantList path() const;
    [[nodiscard]] QString notebookId() const;
    [[nodiscard]] QString notebookName() const;
    [[nodiscard]] QString notebookColor() const;
    [[nodiscard]] bool readOnly() const;

    Q_INVOKABLE void addTag(const QString& tag);
    Q_INVOKABLE void removeTag(const QString& tag);
    /// The page expires so many days from today.
    Q_INVOKABLE void expireIn(int days);
    /// "YYYY-MM-DD"; empty: it never does. Anything else changes nothing.
    Q_INVOKABLE void setExpiryDay(const QString& day);
    /// "Friday, 4 December 2026" for "2026-12-04"; empty for what is no day.
    Q_INVOKABLE [[nodiscard]] QString dayInWords(const QString& day) const;
    /// Cards of what the text holds in question and answer form; tells what came of it.
    Q_INVOKABLE QString makeCardsFromText();

Q_SIGNALS:
    void deskChanged();
    void pageIdChanged();
    void changed();

private:
    [[nodiscard]] const JournalEntry* page() const;
    [[nodiscard]] const Notebook* notebook() const;
    template <class Change>
    void change(Change apply);
    void setExpiry(std::optional<Date> moment);

    Desk* desk_ = nullptr;
    PageId id_;
};

}  // namespace tessary
