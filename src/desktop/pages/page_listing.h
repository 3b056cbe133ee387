#pragma once

#include <QtCore/QObject>

#include "desktop/desk/desk.h"

namespace tessary {

/// How pages are listed, and what stands beside them; kept in the settings.
class PageListing : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY changed)
    /// "created", "edited" or "title".
    Q_PROPERTY(QString sortMode READ sortMode WRITE setSortMode NOTIFY changed)
    /// Titles then run from A to Z.
    Q_PROPERTY(bool newestFirst READ newestFirst WRITE setNewestFirst NOTIFY changed)
    /// "cards", "outline" or "hidden".
    Q_PROPERTY(QString panel READ panel WRITE setPanel NOTIFY changed)

public:
    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString sortMode() const;
    void setSortMode(const QString& mode);
    [[nodiscard]] bool newestFirst() const;
    void setNewestFirst(bool newest);
    [[nodiscard]] QString panel() const;
    void setPanel(const QString& panel);

Q_SIGNALS:
    void changed();

private:
    void store(const char* key, const QString& value);

    Desk* desk_ = nullptr;
};

}  // namespace tessary
