#include "desktop/study/study_model.h"

#include <algorithm>

#include "desktop/study/study_values.h"

namespace tessary {

void StudyModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    counting_.cancel();
    if (desk_ != nullptr) desk_->disconnect(this);
    desk_ = desk;
    if (desk_ != nullptr) {
        connect(desk_, &Desk::cardsChanged, this, &StudyModel::refresh);
        connect(desk_, &Desk::libraryChanged, this, &StudyModel::refresh);
    }
    Q_EMIT deskChanged();
    refresh();
}

void StudyModel::refresh() {
    if (desk_ == nullptr) return;
    StudyMaterial material{.cards = desk_->cards().cards().snapshot(),
                           .pages = desk_->library().entries().snapshot(),
                           .leechLapses = desk_->cards().leechLapses()};
    counting_.ask(
        desk_->loop(),
        [material = std::move(material), &calendar = desk_->ports().calendar, &log = desk_->workspace().reviewLog(),
         now = desk_->now()](std::stop_token stop) mutable {
            auto numbers = std::make_shared<Numbers>();
            numbers->today = calendar.civilTime(now).day;
            numbers->statistics = studyStatistics(material, calendar, now, kForecastDays, stop);
            material = {};
            const std::vector<ReviewLogEntry> entries = log.read(historyStart(calendar, now), stop);
            numbers->history = reviewHistory(entries, calendar, now);
            return std::shared_ptr<const Numbers>(std::move(numbers));
        },
        [this](std::shared_ptr<const Numbers> numbers) { take(std::move(numbers)); });
}

void StudyModel::take(std::shared_ptr<const Numbers> numbers) {
    numbers_ = std::move(numbers);
    decks_.show(*desk_, numbers_->statistics);
    Q_EMIT refreshed();
}

const StudyModel::Numbers& StudyModel::numbers() const {
    static const Numbers none;
    return numbers_ == nullptr ? none : *numbers_;
}

QString StudyModel::summary() const {
    if (!ready()) return {};
    QString text =
        tr("%1 in %2").arg(countOf(cards(), tr("card"), tr("cards")), countOf(decks_.count(), tr("deck"), tr("decks")));
    if (history().tested > 0) {
        const double share = static_cast<double>(history().remembered) / static_cast<double>(history().tested);
        text += tr(" · %1 % remembered in the last 30 days").arg(qRound(share * 100));
    }
    return text;
}

QList<int> StudyModel::forecast() const { return {statistics().forecast.begin(), statistics().forecast.end()}; }

QStringList StudyModel::forecastNames() const {
    return tessary::forecastNames(numbers().today, statistics().forecast.size());
}

QStringList StudyModel::forecastTicks() const {
    return tessary::forecastTicks(numbers().today, statistics().forecast.size());
}

QString StudyModel::forecastText() const { return tessary::forecastText(statistics().forecast, numbers().today); }

QList<int> StudyModel::recall() const { return {statistics().recall.begin(), statistics().recall.end()}; }

QString StudyModel::recallText() const { return tessary::recallText(statistics()); }

QList<int> StudyModel::heat() const { return heatLevels(history()); }

QVariantList StudyModel::heatMonths() const { return tessary::heatMonths(history()); }

QString StudyModel::heatSummary() const {
    const ReviewHistory& past = history();
    if (past.reviews == 0) return {};
    const auto days = [](std::int64_t count) { return countOf(count, tr("day"), tr("days")); };
    QString text =
        tr("%1 on %2 · longest streak %3")
            .arg(countOf(past.reviews, tr("review"), tr("reviews")), days(past.activeDays), days(past.longestStreak));
    if (past.streak > 1) text += tr(" · %1 in a row now").arg(days(past.streak));
    return text;
}

QString StudyModel::heatText(int day) const {
    if (day < 0 || static_cast<std::size_t>(day) >= history().days.size()) return {};
    return tessary::heatText(history().days[static_cast<std::size_t>(day)]);
}

}  // namespace tessary
