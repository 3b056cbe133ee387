#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QObject>

namespace tessary {

/// What a wanted retention comes to in days.
class CardOutlook : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// 0.7 to 0.97; what lies beyond counts as the nearest.
    Q_PROPERTY(double retention READ retention WRITE setRetention NOTIFY changed)
    /// When a card that is known each time comes back: "3 d, 11 d, 1.2 mo".
    Q_PROPERTY(QString intervals READ intervals NOTIFY changed)
    /// How often that card is asked in its first year.
    Q_PROPERTY(int reviewsInYear READ reviewsInYear NOTIFY changed)

public:
    CardOutlook() { refresh(); }

    [[nodiscard]] double retention() const { return retention_; }
    void setRetention(double retention);
    [[nodiscard]] QString intervals() const { return intervals_; }
    [[nodiscard]] int reviewsInYear() const { return reviewsInYear_; }

Q_SIGNALS:
    void changed();

private:
    void refresh();

    double retention_ = 0.9;
    QString intervals_;
    int reviewsInYear_ = 0;
};

}  // namespace tessary
