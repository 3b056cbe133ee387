#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QVariantList>

#include "desktop/desk/desk.h"
#include "desktop/review/card_face.h"
#include "desktop/review/review_values.h"

namespace tessary {

/// One sitting, step by step: what is shown, what may be done, and what a key does. Every step is stored at once.
class ReviewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// "question", "typing", "checking", "answer", "done", "empty"; "" before the start.
    Q_PROPERTY(QString state READ state NOTIFY changed)
    /// What is reviewed, and where that lies.
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY changed)
    Q_PROPERTY(tessary::CardFace card READ card NOTIFY changed)
    /// The option that was chosen, or -1.
    Q_PROPERTY(int chosen READ chosen NOTIFY changed)
    Q_PROPERTY(tessary::GradeNote grade READ grade NOTIFY changed)
    /// Four `ratingChoice`, once the answer is shown.
    Q_PROPERTY(QVariantList ratings READ ratings NOTIFY changed)
    /// The rating that Space and Enter give, 1 to 4.
    Q_PROPERTY(int suggested READ suggested NOTIFY changed)
    /// Answers given, and with those that are still to come.
    Q_PROPERTY(int done READ done NOTIFY changed)
    Q_PROPERTY(int total READ total NOTIFY changed)
    Q_PROPERTY(int newCount READ newCount NOTIFY changed)
    Q_PROPERTY(int learningCount READ learningCount NOTIFY changed)
    Q_PROPERTY(int reviewCount READ reviewCount NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    /// What a step has brought about, when that is not plain to see.
    Q_PROPERTY(QString notice READ notice NOTIFY noticed)
    /// Whether answers are typed; remembered in the settings.
    Q_PROPERTY(bool typeAnswers READ typeAnswers WRITE setTypeAnswers NOTIFY changed)
    Q_PROPERTY(tessary::ReviewOutcome outcome READ outcome NOTIFY changed)
    /// Why there is nothing to review.
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed)

public:
    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString state() const;
    [[nodiscard]] QString title() const { return title_; }
    [[nodiscard]] QString subtitle() const { return subtitle_; }
    [[nodiscard]] const CardFace& card() const { return face_; }
    [[nodiscard]] int chosen() const { return chosen_; }
    [[nodiscard]] const GradeNote& grade() const { return grade_; }
    [[nodiscard]] const QVariantList& ratings() const { return ratings_; }
    [[nodiscard]] int suggested() const { return static_cast<int>(suggested_); }
    [[nodiscard]] int done() const { return static_cast<int>(given_.size()); }
    [[nodiscard]] int total() const { return done() + newCount() + learningCount() + reviewCount(); }
    [[nodiscard]] int newCount() const { return static_cast<int>(remaining_.fresh); }
    [[nodiscard]] int learningCount() const { return static_cast<int>(remaining_.learning); }
    [[nodiscard]] int reviewCount() const { return static_cast<int>(remaining_.review); }
    [[nodiscard]] bool canUndo() const { return session_ != nullptr && session_->canUndo(); }
    [[nodiscard]] QString notice() const { return notice_; }
    [[nodiscard]] bool typeAnswers() const;
    void setTypeAnswers(bool typed);
    [[nodiscard]] const ReviewOutcome& outcome() const { return outcome_; }
    [[nodiscard]] QString emptyText() const { return emptyText_; }

    /// The due cards of the page with its subpages; with an empty `page` those of a deck's place, a notebook's identity
    /// or "loose", and with both empty all.
    Q_INVOKABLE void start(const QString& page, const QString& place = {});
    /// Shows the answer, unjudged; gives up a check that is under way.
    Q_INVOKABLE void reveal();
    Q_INVOKABLE void chooseOption(int index);
    /// One text for each blank.
    Q_INVOKABLE void answerTyped(const QStringList& typed);
    Q_INVOKABLE void rate(int rating);
    Q_INVOKABLE void undo();
    Q_INVOKABLE void suspend();
    Q_INVOKABLE void toggleFlag();
    /// What an edit sheet starts with.
    Q_INVOKABLE [[nodiscard]] QVariantMap draft() const;
    /// What is wrong with an edited draft; empty when nothing is.
    Q_INVOKABLE [[nodiscard]] QString problemOf(const QVariantMap& draft) const;
    Q_INVOKABLE void edit(const QVariantMap& draft);
    /// Ends the sitting; what was rated stays.
    Q_INVOKABLE void leave();
    /// Does what a key means at this step, as `Qt::Key` and `Qt::KeyboardModifiers`; false when it means nothing.
    Q_INVOKABLE bool press(int key, int modifiers);

Q_SIGNALS:
    void deskChanged();
    void changed();
    /// The shown card's answer is there.
    void turned();
    /// Another card, or the end, is there.
    void dealt();
    /// What the companion makes of a rating: "win" or "fail".
    void reacted(const QString& reaction);
    void noticed();
    void editAsked();
    void pageAsked(const QString& page);
    void leaveAsked();

private:
    enum class State { idle, question, typing, checking, answer, done, empty };
    struct Given {
        CardId card;
        Rating rating = Rating::again;
    };

    [[nodiscard]] Date now() const { return desk_->now(); }
    [[nodiscard]] const Flashcard* shown() const;
    [[nodiscard]] bool awaitsAnswer() const { return state_ == State::question || state_ == State::typing; }
    [[nodiscard]] State questionState() const;
    void deal();
    void end();
    void refresh();
    void awaitNextCard(std::optional<Date> nextDue);
    void showAnswer(const GradeNote& grade, Rating suggested);
    void check(const CardContent& content, const std::vector<std::string>& typed, const QString& shownAs);
    void stopChecking();
    void tell(const QString& sentence);
    bool pressOnCard(int key);

    Desk* desk_ = nullptr;
    ReviewScope scope_;
    std::unique_ptr<ReviewSession> session_;
    std::unique_ptr<AnswerGrader> grader_;  ///< made for the first check
    State state_ = State::idle;
    std::optional<CardId> shownId_;
    std::vector<Given> given_;  ///< what was not taken back
    bool hadCards_ = false;  ///< in this sitting
    ReviewSession::Remaining remaining_;
    QElapsedTimer thinking_;
    DelayedTask waiting_;
    QString title_;
    QString subtitle_;
    CardFace face_;
    int chosen_ = -1;
    GradeNote grade_;
    QVariantList ratings_;
    Rating suggested_ = Rating::good;
    ReviewOutcome outcome_;
    QString notice_;
    QString emptyText_;
};

}  // namespace tessary
