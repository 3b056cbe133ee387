#include "desktop/desk/moments.h"

#include <QtCore/QDate>
#include <QtCore/QLocale>
#include <QtCore/QObject>

namespace tessary {

QString editedText(Date moment, Date now, const LocalCalendar& calendar) {
    const double seconds = now - moment;
    const Date today = calendar.startOfDay(now);
    if (seconds < kSecondsPerMinute) return QObject::tr("just now");
    if (seconds < 60 * kSecondsPerMinute)
        return QObject::tr("%1 min ago").arg(static_cast<int>(seconds / kSecondsPerMinute));
    if (today <= moment) return QObject::tr("%1 h ago").arg(static_cast<int>(seconds / (60 * kSecondsPerMinute)));
    if (calendar.addingDays(today, -1) <= moment) return QObject::tr("yesterday");
    const CivilTime then = calendar.civilTime(moment);
    const QDate date(then.day.year, then.day.month, then.day.day);
    const bool thisYear = then.day.year == calendar.civilTime(now).day.year;
    return QLocale::c().toString(date, thisYear ? "d MMM" : "d MMM yyyy");
}

}  // namespace tessary
