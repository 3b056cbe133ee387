#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtGui/QColor>
#include <QtQuick/QQuickItem>

namespace tessary {

/// A soft shadow around this item's rectangle, painted `blur` logical pixels beyond it. One small picture stretched in
/// nine parts, so it costs the same at any size and needs no shader. Main thread; painting on the render thread.
class Shadow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal blur MEMBER blur_ NOTIFY pictureChanged)
    Q_PROPERTY(qreal radius MEMBER radius_ NOTIFY pictureChanged)
    /// Its alpha is the shadow's strength.
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY pictureChanged)

public:
    explicit Shadow(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void pictureChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void repaint();

    qreal blur_ = 14;
    qreal radius_ = 10;
    QColor color_ = Qt::black;
    bool stale_ = true;
};

}  // namespace tessary
