#pragma once

#include <QtCore/QUrl>

#include "desktop/shelf/shelf_model.h"

namespace tessary {

/// A notebook's name and look while the user changes them; nothing is kept before `save`.
class NotebookDraft : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::ShelfModel* shelf MEMBER shelf_ NOTIFY changed)
    /// Empty for a notebook to be made.
    Q_PROPERTY(QString notebookId READ notebookId NOTIFY changed)
    Q_PROPERTY(QString name MEMBER name_ NOTIFY changed)
    Q_PROPERTY(QString subtitle MEMBER subtitle_ NOTIFY changed)
    Q_PROPERTY(QString emoji MEMBER emoji_ NOTIFY changed)
    /// As the user writes it; it may be no colour yet.
    Q_PROPERTY(QString color READ color WRITE setColor NOTIFY changed)
    /// Of band and ribbon; empty: chosen to go with `color`.
    Q_PROPERTY(QString accent MEMBER accent_ NOTIFY changed)
    Q_PROPERTY(QString material MEMBER material_ NOTIFY changed)
    Q_PROPERTY(QString pattern MEMBER pattern_ NOTIFY changed)
    Q_PROPERTY(QString labelStyle MEMBER labelStyle_ NOTIFY changed)
    Q_PROPERTY(bool band MEMBER band_ NOTIFY changed)
    Q_PROPERTY(bool ribbon MEMBER ribbon_ NOTIFY changed)
    /// The path of a picture on the cover, or empty. One that was chosen comes into the library with `save`.
    Q_PROPERTY(QString coverImage READ coverImage NOTIFY changed)
    /// "Pictures (*.jpg *.png)": what a cover can show.
    Q_PROPERTY(QString pictureFilter READ pictureFilter CONSTANT)
    /// The last colour that was one: what the preview shows while another is written.
    Q_PROPERTY(QString shownColor READ shownColor NOTIFY changed)
    Q_PROPERTY(bool colorIsValid READ colorIsValid NOTIFY changed)
    Q_PROPERTY(bool canSave READ canSave NOTIFY changed)

public:
    [[nodiscard]] QString notebookId() const { return notebookId_; }
    [[nodiscard]] QString color() const { return color_; }
    void setColor(const QString& color);
    [[nodiscard]] QString shownColor() const { return shownColor_; }
    [[nodiscard]] bool colorIsValid() const;
    [[nodiscard]] QString coverImage() const { return coverImage_; }
    [[nodiscard]] QString pictureFilter() const;
    [[nodiscard]] bool canSave() const { return colorIsValid() && !name_.trimmed().isEmpty(); }

    /// Starts from this notebook as it is, or from a new one when `notebook` is empty.
    Q_INVOKABLE void begin(const QString& notebook);
    /// A file that is no picture is refused, and the cover stays as it is.
    Q_INVOKABLE void chooseCoverImage(const QUrl& file);
    Q_INVOKABLE void removeCoverImage();
    /// Gives the notebook's identity, empty when refused.
    Q_INVOKABLE QString save();

Q_SIGNALS:
    void changed();

private:
    void takeColor(const QString& color);
    [[nodiscard]] QVariantMap look() const;

    ShelfModel* shelf_ = nullptr;
    QString notebookId_;
    QString name_;
    QString subtitle_;
    QString emoji_;
    QString color_;
    QString shownColor_;
    QString accent_;
    QString material_;
    QString pattern_;
    QString labelStyle_;
    QString coverImage_;
    bool band_ = false;
    bool ribbon_ = false;
};

}  // namespace tessary
