#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtQuick/QQuickItem>
#include <memory>

#include "desktop/shelf/cover_painter.h"

namespace tessary {

/// A notebook's cover. The item is as large as the board; its shadow and ribbon reach beyond it. The picture is painted
/// once per change on a worker thread, at device pixels, and shared by all items that look the same; until a new one is
/// there the old one stays. Words are those of the library's files; unknown ones give the default look.
class CoverItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// The grain is the notebook's own.
    Q_PROPERTY(QString notebookId MEMBER notebookId_ NOTIFY lookChanged)
    Q_PROPERTY(QString title MEMBER title_ NOTIFY lookChanged)
    Q_PROPERTY(QString subtitle MEMBER subtitle_ NOTIFY lookChanged)
    Q_PROPERTY(QString emoji MEMBER emoji_ NOTIFY lookChanged)
    Q_PROPERTY(QString color MEMBER color_ NOTIFY lookChanged)
    /// Of band and ribbon; empty: chosen to go with `color`.
    Q_PROPERTY(QString accent MEMBER accent_ NOTIFY lookChanged)
    Q_PROPERTY(QString material MEMBER material_ NOTIFY lookChanged)
    Q_PROPERTY(QString pattern MEMBER pattern_ NOTIFY lookChanged)
    Q_PROPERTY(QString labelStyle MEMBER labelStyle_ NOTIFY lookChanged)
    Q_PROPERTY(bool band MEMBER band_ NOTIFY lookChanged)
    Q_PROPERTY(bool ribbon MEMBER ribbon_ NOTIFY lookChanged)
    /// The path of a picture; empty: none.
    Q_PROPERTY(QString coverImage MEMBER coverImage_ NOTIFY lookChanged)
    Q_PROPERTY(bool dark MEMBER dark_ NOTIFY lookChanged)

public:
    explicit CoverItem(QQuickItem* parent = nullptr);
    ~CoverItem() override;

Q_SIGNALS:
    void lookChanged();

protected:
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    struct Delivery;

    [[nodiscard]] CoverLook look() const;
    void order(const CoverLook& look, int pixels);
    void take(const CoverLook& look, int pixels, const CoverPicture& picture);
    void show(const CoverPicture& picture);

    QString notebookId_;
    QString title_;
    QString subtitle_;
    QString emoji_;
    QString color_;
    QString accent_;
    QString material_;
    QString pattern_;
    QString labelStyle_;
    QString coverImage_;
    bool band_ = false;
    bool ribbon_ = false;
    bool dark_ = false;

    std::shared_ptr<Delivery> delivery_;
    CoverLook wanted_;
    int wantedPixels_ = 0;
    CoverPicture picture_;
    bool stale_ = false;  ///< the texture does not show `picture_` yet
};

}  // namespace tessary
