#include "desktop/review/review_values.h"

#include <cmath>

#include "base/text.h"
#include "desktop/desk/desk.h"

namespace tessary {
namespace {

QString duration(double seconds) {
    const auto whole = static_cast<int>(std::lround(seconds));
    if (whole < 60) return QObject::tr("%1 s").arg(whole);
    return whole % 60 == 0 ? QObject::tr("%1 min").arg(whole / 60)
                           : QObject::tr("%1 min %2 s").arg(whole / 60).arg(whole % 60);
}

}  // namespace

QString nameOf(Rating rating) {
    switch (rating) {
        case Rating::again: return QObject::tr("Again");
        case Rating::hard: return QObject::tr("Hard");
        case Rating::good: return QObject::tr("Good");
        case Rating::easy: break;
    }
    return QObject::tr("Easy");
}

std::vector<RatingChoice> ratingChoices(const CardMemory& memory, Date now, const Settings& settings) {
    const bool showIntervals = settings.boolean("flashcards.showIntervals").value_or(true);
    const RatingOutcomes outcomes = previewRatings(memory, now, desiredRetention(settings));
    const auto choice = [&](Rating rating, const CardMemory& outcome) {
        return RatingChoice{.number = static_cast<int>(rating),
                            .name = nameOf(rating),
                            .interval = showIntervals ? toQml(formatInterval(outcome.due - now)) : QString()};
    };
    return {choice(Rating::again, outcomes.again), choice(Rating::hard, outcomes.hard),
            choice(Rating::good, outcomes.good), choice(Rating::easy, outcomes.easy)};
}

GradeNote noteOf(const AnswerGrade& grade) {
    const QString missing = toQml(joined(grade.missing, ", "));
    return {.verdict = QString::fromLatin1(enumName(grade.verdict)),
            .feedback = toQml(grade.feedback),
            .detail = missing.isEmpty() ? QString() : QObject::tr("Missing: %1").arg(missing),
            .typed = {}};
}

QString nextDueSentence(std::optional<Date> nextDue, Date now) {
    if (!nextDue) return {};
    if (*nextDue <= now) return QObject::tr("More cards are waiting.");
    return QObject::tr("The next card is due in %1.").arg(toQml(formatInterval(*nextDue - now)));
}

ReviewOutcome outcomeOf(const ReviewSession::Summary& summary, const std::vector<Rating>& given, Date now) {
    ReviewOutcome outcome;
    outcome.cards = static_cast<int>(summary.cards);
    outcome.ratings = static_cast<int>(summary.ratings);
    outcome.time = duration(summary.seconds);
    outcome.next = nextDueSentence(summary.nextDue, now);
    for (const Rating rating : given) ++outcome.counts[static_cast<int>(rating) - 1];
    if (summary.ratings == 0) return outcome;
    const auto ratings = static_cast<double>(summary.ratings);
    outcome.remembered = static_cast<double>(summary.remembered) / ratings;
    outcome.perCard = duration(summary.seconds / static_cast<double>(summary.cards));
    return outcome;
}

}  // namespace tessary
