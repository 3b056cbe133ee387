#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QObject>
#include <QtCore/QStringList>

namespace tessary {

/// Something that the window can do: found by its title in the palette, and done by its keys wherever it is enabled.
class Command : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString title MEMBER title_ NOTIFY changed)
    /// Other words to find it by.
    Q_PROPERTY(QString keywords MEMBER keywords_ NOTIFY changed)
    Q_PROPERTY(QString iconName MEMBER iconName_ NOTIFY changed)
    /// As "Ctrl+K". Only the first is shown.
    Q_PROPERTY(QStringList keys MEMBER keys_ NOTIFY changed)
    Q_PROPERTY(QString keyText READ keyText NOTIFY changed)
    Q_PROPERTY(bool enabled MEMBER enabled_ NOTIFY changed)
    /// Whether the palette offers it.
    Q_PROPERTY(bool listed MEMBER listed_ NOTIFY changed)

public:
    explicit Command(QObject* parent = nullptr) : QObject(parent) {}

    [[nodiscard]] const QString& title() const { return title_; }
    [[nodiscard]] const QString& keywords() const { return keywords_; }
    [[nodiscard]] const QString& iconName() const { return iconName_; }
    /// The first of its keys for people: "Ctrl K".
    [[nodiscard]] QString keyText() const;
    [[nodiscard]] bool isOffered() const { return enabled_ && listed_; }

    /// Does nothing while it is not enabled.
    Q_INVOKABLE void trigger() {
        if (enabled_) Q_EMIT triggered();
    }

Q_SIGNALS:
    void changed();
    void triggered();

private:
    QString title_;
    QString keywords_;
    QString iconName_;
    QStringList keys_;
    bool enabled_ = true;
    bool listed_ = true;
};

}  // namespace tessary
