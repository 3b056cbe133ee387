#pragma once

#include <QtGui/QColor>
#include <QtQuick/QQuickPaintedItem>

namespace tessary {

/// Days as small squares, a column for each week, Monday on top. Draws only; which day lies where is told here too.
class HeatMap : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// A shade for each day, 0 to 4; the last is today.
    Q_PROPERTY(QList<int> levels MEMBER levels_ WRITE setLevels NOTIFY looksChanged)
    Q_PROPERTY(QList<QColor> shades MEMBER shades_ WRITE setShades NOTIFY looksChanged)
    Q_PROPERTY(QColor ink MEMBER ink_ WRITE setInk NOTIFY looksChanged)
    /// The day that is pointed at; -1 for none.
    Q_PROPERTY(int current MEMBER current_ WRITE setCurrent NOTIFY currentChanged)
    /// From one square to the next; whole pixels.
    Q_PROPERTY(int pitch MEMBER pitch_ WRITE setPitch NOTIFY looksChanged)

public:
    explicit HeatMap(QQuickItem* parent = nullptr);

    void setLevels(const QList<int>& levels);
    void setShades(const QList<QColor>& shades);
    void setInk(const QColor& ink);
    void setCurrent(int day);
    void setPitch(int pitch);

    /// -1 where there is none.
    Q_INVOKABLE [[nodiscard]] int dayAt(qreal x, qreal y) const;
    Q_INVOKABLE [[nodiscard]] QRectF squareOf(int day) const;

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void looksChanged();
    void currentChanged();

private:
    template <class Value>
    void set(Value& member, const Value& value);

    QList<int> levels_;
    QList<QColor> shades_;
    QColor ink_;
    int current_ = -1;
    int pitch_ = 17;
};

}  // namespace tessary
