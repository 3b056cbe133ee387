#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QObject>
#include <QtCore/QRectF>
#include <QtCore/QVariantList>
#include <QtGui/QFont>

namespace tessary {

/// Where marked parts of a plain text lie when it is laid out as a Text with the same font, width and line height lays
/// it out: one box for each line that a part is on.
class TextMarks : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text MEMBER text_ NOTIFY changed)
    Q_PROPERTY(QFont font MEMBER font_ NOTIFY changed)
    /// Lines break at it; one line when it is 0.
    Q_PROPERTY(qreal wrapWidth MEMBER wrapWidth_ NOTIFY changed)
    Q_PROPERTY(qreal lineHeight MEMBER lineHeight_ NOTIFY changed)
    /// Maps of "start" and "length", in UTF-16 code units.
    Q_PROPERTY(QVariantList marks MEMBER marks_ NOTIFY changed)
    Q_PROPERTY(QList<QRectF> boxes READ boxes NOTIFY changed)

public:
    [[nodiscard]] QList<QRectF> boxes() const;

Q_SIGNALS:
    void changed();

private:
    QString text_;
    QFont font_;
    qreal wrapWidth_ = 0;
    qreal lineHeight_ = 0;
    QVariantList marks_;
};

}  // namespace tessary
