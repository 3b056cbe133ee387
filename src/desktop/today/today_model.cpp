#include "desktop/today/today_model.h"

#include <QtCore/QDate>
#include <QtCore/QLocale>

#include "companion/greeting.h"
#include "companion/plim_reaction_names.h"
#include "desktop/desk/moments.h"

namespace tessary {
namespace {

QDate dateOf(CivilDay day) { return {day.year, day.month, day.day}; }

QString colorOf(const std::string& hex) { return hex.empty() ? QString() : "#" + toQml(hex); }

/// As the window's places are named.
QString placeOf(std::optional<NotebookId> notebook) { return notebook ? toQml(*notebook) : QString("loose"); }

QVariantMap pageMap(const TodaySummary::Page& page) {
    return {{"pageId", toQml(page.id)},
            {"place", placeOf(page.in)},
            {"title", page.title.empty() ? QObject::tr("Untitled") : toQml(page.title)},
            {"notebook", toQml(page.notebook)},
            {"color", colorOf(page.color)}};
}

QString aheadText(int days) {
    if (days == 0) return QObject::tr("today");
    return days == 1 ? QObject::tr("tomorrow") : QObject::tr("in %1 days").arg(days);
}

}  // namespace

TodayModel::TodayModel() {
    minutely_.setInterval(std::chrono::minutes(1));
    connect(&minutely_, &QTimer::timeout, this, &TodayModel::refresh);
}

void TodayModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    if (desk_ != nullptr) desk_->disconnect(this);
    counting_.cancel();
    desk_ = desk;
    if (desk_ != nullptr) {
        connect(desk_, &Desk::libraryChanged, this, &TodayModel::refresh);
        connect(desk_, &Desk::cardsChanged, this, &TodayModel::refresh);
        minutely_.start();
        refresh();
    }
    Q_EMIT deskChanged();
}

void TodayModel::refresh() {
    TodayMaterial material{.study = {.cards = desk_->cards().cards().snapshot(),
                                     .pages = desk_->library().entries().snapshot(),
                                     .leechLapses = desk_->cards().leechLapses()},
                           .notebooks = desk_->library().notebooks().snapshot(),
                           .exams = desk_->library().exams().snapshot(),
                           .log = {}};
    counting_.ask(
        desk_->loop(),
        [material = std::move(material), &calendar = desk_->ports().calendar, &log = desk_->workspace().reviewLog(),
         now = desk_->now()](std::stop_token stop) mutable {
            material.log = log.read(historyStart(calendar, now), stop);
            return todaySummary(material, calendar, now, stop);
        },
        [this](TodaySummary summary) { show(std::move(summary)); });
}

void TodayModel::show(TodaySummary summary) {
    summary_ = std::move(summary);
    GreetingMoment moment{.hour = desk_->ports().calendar.civilTime(desk_->now()).hour,
                          .due = static_cast<std::size_t>(summary_.due),
                          .hasCards = hasCards(),
                          .streak = static_cast<int>(summary_.streak),
                          .studiedToday = summary_.studiedToday,
                          .exam = {}};
    if (!summary_.exams.empty())
        moment.exam = GreetingMoment::ExamAhead{.title = summary_.exams[0].title, .days = summary_.exams[0].days};
    const Greeting greeting = greet(moment);
    headline_ = toQml(greeting.headline);
    line_ = toQml(greeting.line);
    reaction_ = QString::fromUtf8(rawValue(greeting.reaction));
    ready_ = true;
    Q_EMIT changed();
}

QString TodayModel::date() const {
    if (desk_ == nullptr) return {};
    return QLocale::c().toString(dateOf(desk_->ports().calendar.civilTime(desk_->now()).day), "dddd, d MMMM");
}

QString TodayModel::dueTime() const {
    if (summary_.due == 0 || summary_.secondsPerCard <= 0) return {};
    const double minutes = static_cast<double>(summary_.due) * summary_.secondsPerCard / kSecondsPerMinute;
    return minutes < 1.5 ? tr("about a minute") : tr("about %1 minutes").arg(std::lround(minutes));
}

QVariantList TodayModel::decks() const {
    QVariantList decks;
    for (const TodaySummary::Deck& deck : summary_.decks) {
        decks.append(QVariantMap{{"notebookId", placeOf(deck.notebook)},
                                 {"name", toQml(deck.name)},
                                 {"color", colorOf(deck.color)},
                                 {"due", static_cast<int>(deck.due)}});
    }
    return decks;
}

QVariantList TodayModel::weakest() const {
    QVariantList pages;
    for (const TodaySummary::Page& page : summary_.weakest) {
        QVariantMap map = pageMap(page);
        map["recall"] = page.recall;
        pages.append(map);
    }
    return pages;
}

QVariantList TodayModel::recent() const {
    QVariantList pages;
    for (const TodaySummary::Page& page : summary_.recent) {
        QVariantMap map = pageMap(page);
        map["edited"] = editedText(page.edited, desk_->now(), desk_->ports().calendar);
        pages.append(map);
    }
    return pages;
}

QVariantList TodayModel::exams() const {
    QVariantList exams;
    for (const TodaySummary::ExamAhead& exam : summary_.exams) {
        const CivilTime when = desk_->ports().calendar.civilTime(exam.date);
        exams.append(QVariantMap{{"title", toQml(exam.title)},
                                 {"notebook", toQml(exam.notebook)},
                                 {"color", colorOf(exam.color)},
                                 {"when", QLocale::c().toString(dateOf(when.day), "ddd d MMM")},
                                 {"ahead", aheadText(exam.days)}});
    }
    return exams;
}

QVariantList TodayModel::week() const {
    QVariantList days;
    for (const ReviewHistory::Day& day : summary_.week) {
        const QString name = QLocale::c().toString(dateOf(day.day), "dddd");
        days.append(QVariantMap{{"letter", name.left(1)},
                                {"name", name},
                                {"reviews", static_cast<int>(day.reviews)},
                                {"today", &day == &summary_.week.back()}});
    }
    return days;
}

QString TodayModel::streakTitle() const {
    if (summary_.streak == 0) return tr("Your streak starts with one card");
    return summary_.streak == 1 ? tr("1 day") : tr("%1 days in a row").arg(summary_.streak);
}

QString TodayModel::streakDetail() const {
    return summary_.longestStreak > summary_.streak ? tr("Best %1").arg(summary_.longestStreak) : QString();
}

}  // namespace tessary
