#pragma once

#include <QtCore/QTimer>
#include <QtCore/QVariantList>

#include "desktop/desk/desk.h"
#include "desktop/desk/inquiry.h"
#include "desktop/today/today_summary.h"

namespace tessary {

/// The page that a day begins with. What it tells is counted on a thread of its own, and told when it is there.
class TodayModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// False until the first count is there.
    Q_PROPERTY(bool ready READ ready NOTIFY changed)
    Q_PROPERTY(QString headline READ headline NOTIFY changed)
    Q_PROPERTY(QString line READ line NOTIFY changed)
    /// What the companion does about it, by its name.
    Q_PROPERTY(QString reaction READ reaction NOTIFY changed)
    /// As in "Saturday, 21 November".
    Q_PROPERTY(QString date READ date NOTIFY changed)
    Q_PROPERTY(int due READ due NOTIFY changed)
    /// As in "about 14 minutes"; empty when nothing is due or too little is known.
    Q_PROPERTY(QString dueTime READ dueTime NOTIFY changed)
    /// Maps of "notebookId" ("loose" too), "name", "color" and "due".
    Q_PROPERTY(QVariantList decks READ decks NOTIFY changed)
    /// Maps of "pageId", "place", "title", "notebook", "color" and "recall" (0 to 1).
    Q_PROPERTY(QVariantList weakest READ weakest NOTIFY changed)
    /// Maps of "pageId", "place", "title", "notebook", "color" and "edited".
    Q_PROPERTY(QVariantList recent READ recent NOTIFY changed)
    /// Maps of "title", "notebook", "color", "when" and "ahead".
    Q_PROPERTY(QVariantList exams READ exams NOTIFY changed)
    /// The last seven days, today last: maps of "letter", "name", "reviews" and "today".
    Q_PROPERTY(QVariantList week READ week NOTIFY changed)
    Q_PROPERTY(QString streakTitle READ streakTitle NOTIFY changed)
    Q_PROPERTY(QString streakDetail READ streakDetail NOTIFY changed)
    Q_PROPERTY(bool hasCards READ hasCards NOTIFY changed)

public:
    TodayModel();

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] bool ready() const { return ready_; }
    [[nodiscard]] QString headline() const { return headline_; }
    [[nodiscard]] QString line() const { return line_; }
    [[nodiscard]] QString reaction() const { return reaction_; }
    [[nodiscard]] QString date() const;
    [[nodiscard]] int due() const { return static_cast<int>(summary_.due); }
    [[nodiscard]] QString dueTime() const;
    [[nodiscard]] QVariantList decks() const;
    [[nodiscard]] QVariantList weakest() const;
    [[nodiscard]] QVariantList recent() const;
    [[nodiscard]] QVariantList exams() const;
    [[nodiscard]] QVariantList week() const;
    [[nodiscard]] QString streakTitle() const;
    [[nodiscard]] QString streakDetail() const;
    [[nodiscard]] bool hasCards() const { return summary_.cards > 0; }

Q_SIGNALS:
    void deskChanged();
    void changed();

private:
    void refresh();
    void show(TodaySummary summary);

    Desk* desk_ = nullptr;
    bool ready_ = false;
    QString headline_;
    QString line_;
    QString reaction_ = "idle";
    TodaySummary summary_;
    QTimer minutely_;  // cards fall due, and days end, while nothing changes
    Inquiry<TodaySummary> counting_;
};

}  // namespace tessary
