#pragma once

#include <QtGui/QColor>

#include "desktop/desk/desk.h"

namespace tessary {

/// The colour of the notebook that is shown.
class NotebookAccent : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY changed)
    /// As `Navigator` has them; both may be empty.
    Q_PROPERTY(QString place MEMBER place_ NOTIFY changed)
    Q_PROPERTY(QString page MEMBER page_ NOTIFY changed)
    /// Of the page's notebook, else of the place's; not valid where none is shown.
    Q_PROPERTY(QColor color READ color NOTIFY changed)
    Q_PROPERTY(bool known READ known NOTIFY changed)

public:
    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QColor color() const;
    [[nodiscard]] bool known() const { return color().isValid(); }

Q_SIGNALS:
    void changed();

private:
    Desk* desk_ = nullptr;
    QString place_;
    QString page_;
};

}  // namespace tessary
