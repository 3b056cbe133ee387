#pragma once

#include "desktop/desk/inquiry.h"
#include "desktop/study/study_decks_model.h"

namespace tessary {

/// How learning goes, as a whole. Computed on a thread of its own, anew after every change; what was shown before stays
/// until then.
class StudyModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// False until the first numbers are there.
    Q_PROPERTY(bool ready READ ready NOTIFY refreshed)
    Q_PROPERTY(int cards READ cards NOTIFY refreshed)
    Q_PROPERTY(int due READ due NOTIFY refreshed)
    Q_PROPERTY(int fresh READ fresh NOTIFY refreshed)
    Q_PROPERTY(int overdue READ overdue NOTIFY refreshed)
    /// "1,106 cards in 8 decks · 91 % remembered in the last 30 days"
    Q_PROPERTY(QString summary READ summary NOTIFY refreshed)
    /// Cards that fall due on each of the next days, today first.
    Q_PROPERTY(QList<int> forecast READ forecast NOTIFY refreshed)
    Q_PROPERTY(QStringList forecastNames READ forecastNames NOTIFY refreshed)
    Q_PROPERTY(QStringList forecastTicks READ forecastTicks NOTIFY refreshed)
    Q_PROPERTY(QString forecastText READ forecastText NOTIFY refreshed)
    /// Reviewed cards by their chance of recall now, a tenth each.
    Q_PROPERTY(QList<int> recall READ recall NOTIFY refreshed)
    Q_PROPERTY(QString recallText READ recallText NOTIFY refreshed)
    Q_PROPERTY(bool anyReviewed READ anyReviewed NOTIFY refreshed)
    /// The days of a year, from a Monday to today, as shades from 0 to 4.
    Q_PROPERTY(QList<int> heat READ heat NOTIFY refreshed)
    Q_PROPERTY(QVariantList heatMonths READ heatMonths NOTIFY refreshed)
    /// "9,412 reviews on 261 days · longest streak 34 days"
    Q_PROPERTY(QString heatSummary READ heatSummary NOTIFY refreshed)
    /// Days on end that were studied, up to today.
    Q_PROPERTY(int streak READ streak NOTIFY refreshed)
    Q_PROPERTY(tessary::StudyDecksModel* decks READ decks CONSTANT)

public:
    static constexpr std::size_t kForecastDays = 30;

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] bool ready() const { return numbers_ != nullptr; }
    [[nodiscard]] int cards() const { return static_cast<int>(statistics().total.total); }
    [[nodiscard]] int due() const { return static_cast<int>(statistics().total.due); }
    [[nodiscard]] int fresh() const { return static_cast<int>(statistics().total.fresh); }
    [[nodiscard]] int overdue() const { return static_cast<int>(statistics().overdue); }
    [[nodiscard]] QString summary() const;
    [[nodiscard]] QList<int> forecast() const;
    [[nodiscard]] QStringList forecastNames() const;
    [[nodiscard]] QStringList forecastTicks() const;
    [[nodiscard]] QString forecastText() const;
    [[nodiscard]] QList<int> recall() const;
    [[nodiscard]] QString recallText() const;
    [[nodiscard]] bool anyReviewed() const { return statistics().total.averageRecall.has_value(); }
    [[nodiscard]] QList<int> heat() const;
    [[nodiscard]] QVariantList heatMonths() const;
    [[nodiscard]] QString heatSummary() const;
    [[nodiscard]] int streak() const { return static_cast<int>(history().streak); }
    [[nodiscard]] StudyDecksModel* decks() { return &decks_; }

    /// What was reviewed on a day of `heat`; empty beyond it.
    Q_INVOKABLE [[nodiscard]] QString heatText(int day) const;

Q_SIGNALS:
    void deskChanged();
    void refreshed();

private:
    struct Numbers {
        CivilDay today;
        StudyStatistics statistics;
        ReviewHistory history;
    };

    void refresh();
    void take(std::shared_ptr<const Numbers> numbers);
    [[nodiscard]] const Numbers& numbers() const;
    [[nodiscard]] const StudyStatistics& statistics() const { return numbers().statistics; }
    [[nodiscard]] const ReviewHistory& history() const { return numbers().history; }

    Desk* desk_ = nullptr;
    std::shared_ptr<const Numbers> numbers_;
    StudyDecksModel decks_;
    Inquiry<std::shared_ptr<const Numbers>> counting_;
};

}  // namespace tessary
