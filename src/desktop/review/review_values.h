#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <vector>

#include "study/answer_check.h"
#include "study/review_session.h"
#include "study/scheduler.h"

namespace tessary {

/// One of the four ratings of the card that is shown.
struct RatingChoice {
    Q_GADGET
    QML_VALUE_TYPE(ratingChoice)

    Q_PROPERTY(int number MEMBER number)  // 1 to 4
    Q_PROPERTY(QString name MEMBER name)
    /// When it brings the card back, as in "3d"; empty when the user does not want to see it.
    Q_PROPERTY(QString interval MEMBER interval)

public:
    int number = 0;
    QString name;
    QString interval;

    friend bool operator==(const RatingChoice&, const RatingChoice&) = default;
};

/// How an answer was judged.
struct GradeNote {
    Q_GADGET
    QML_VALUE_TYPE(gradeNote)

    /// "correct", "partial", "wrong", "failed" when it could not be judged, or empty when there is nothing to judge.
    Q_PROPERTY(QString verdict MEMBER verdict)
    Q_PROPERTY(QString feedback MEMBER feedback)
    /// What the answer left out, or why it could not be judged.
    Q_PROPERTY(QString detail MEMBER detail)
    /// The learner's own answer.
    Q_PROPERTY(QString typed MEMBER typed)

public:
    QString verdict;
    QString feedback;
    QString detail;
    QString typed;

    friend bool operator==(const GradeNote&, const GradeNote&) = default;
};

/// What came of one sitting.
struct ReviewOutcome {
    Q_GADGET
    QML_VALUE_TYPE(reviewOutcome)

    Q_PROPERTY(int cards MEMBER cards)
    Q_PROPERTY(int ratings MEMBER ratings)
    /// Of the ratings, 0 to 1.
    Q_PROPERTY(double remembered MEMBER remembered)
    /// "4 min 12 s"
    Q_PROPERTY(QString time MEMBER time)
    Q_PROPERTY(QString perCard MEMBER perCard)
    /// A sentence; empty when nothing will fall due.
    Q_PROPERTY(QString next MEMBER next)
    /// Ratings of each kind, Again first.
    Q_PROPERTY(QList<int> counts MEMBER counts)
    /// Cards are due somewhere in the library.
    Q_PROPERTY(bool moreWaiting MEMBER moreWaiting)

public:
    int cards = 0;
    int ratings = 0;
    double remembered = 0;
    QString time;
    QString perCard;
    QString next;
    QList<int> counts{0, 0, 0, 0};
    bool moreWaiting = false;

    friend bool operator==(const ReviewOutcome&, const ReviewOutcome&) = default;
};

[[nodiscard]] QString nameOf(Rating rating);
[[nodiscard]] std::vector<RatingChoice> ratingChoices(const CardMemory& memory, Date now, const Settings& settings);
[[nodiscard]] GradeNote noteOf(const AnswerGrade& grade);
/// When the next card comes, as a sentence; empty when none will.
[[nodiscard]] QString nextDueSentence(std::optional<Date> nextDue, Date now);
[[nodiscard]] ReviewOutcome outcomeOf(const ReviewSession::Summary& summary, const std::vector<Rating>& given,
                                      Date now);

}  // namespace tessary
