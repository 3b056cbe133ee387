#include "desktop/settings/card_outlook.h"

#include <QtCore/QStringList>
#include <algorithm>
#include <cmath>

#include "study/scheduler.h"

namespace tessary {
namespace {

constexpr double kDay = 86400;  // seconds
constexpr double kYear = 365 * kDay;
constexpr int kShownIntervals = 5;

}  // namespace

void CardOutlook::setRetention(double retention) {
    const double kept = std::isfinite(retention) ? std::clamp(retention, 0.7, 0.97) : kDefaultRetention;
    if (kept == retention_) return;
    retention_ = kept;
    refresh();
}

void CardOutlook::refresh() {
    QStringList shown;
    CardMemory memory;
    Date now;
    const Date start = now;
    reviewsInYear_ = 0;
    while (now.seconds - start.seconds < kYear) {
        memory = schedule(memory, Rating::good, now, retention_, 0, Fuzz::off);
        const double wait = memory.due.seconds - now.seconds;
        ++reviewsInYear_;
        if (wait >= kDay && shown.size() < kShownIntervals) shown.append(QString::fromStdString(formatInterval(wait)));
        now = memory.due;
    }
    intervals_ = shown.join(", ");
    Q_EMIT changed();
}

}  // namespace tessary
