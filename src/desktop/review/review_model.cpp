#include "desktop/review/review_model.h"

#include <algorithm>

#include "ai/grade_job.h"
#include "base/text.h"
#include "desktop/desk/places.h"
#include "desktop/review/review_scope_names.h"

namespace tessary {
namespace {

constexpr const char* kTypeAnswersKey = "flashcards.typeAnswers";
constexpr const char* kAiGradingKey = "flashcards.aiGrading";
/// A longer time is a pause, not thought.
constexpr double kLongestThought = 300;  // seconds
constexpr double kMillisecondsPerSecond = 1000;
// Between two looks for a card that has come back; the clock may be set meanwhile.
constexpr double kShortestWait = 5;    // seconds
constexpr double kLongestWait = 3600;  // seconds

}  // namespace

void ReviewModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    leave();
    if (desk_ != nullptr) desk_->disconnect(this);
    grader_.reset();
    desk_ = desk;
    if (desk_ != nullptr) {
        connect(desk_, &Desk::cardsChanged, this, &ReviewModel::refresh);
        connect(desk_, &Desk::libraryChanged, this, &ReviewModel::refresh);
    }
    Q_EMIT deskChanged();
}

QString ReviewModel::state() const {
    switch (state_) {
        case State::idle: break;
        case State::question: return "question";
        case State::typing: return "typing";
        case State::checking: return "checking";
        case State::answer: return "answer";
        case State::done: return "done";
        case State::empty: return "empty";
    }
    return {};
}

bool ReviewModel::typeAnswers() const {
    return desk_ != nullptr && desk_->settings().boolean(kTypeAnswersKey).value_or(false);
}

void ReviewModel::setTypeAnswers(bool typed) {
    if (desk_ == nullptr || typed == typeAnswers()) return;
    if (const auto stored = desk_->settings().setBoolean(kTypeAnswersKey, typed); !stored) {
        return desk_->refuse(stored.error());
    }
    if (awaitsAnswer()) state_ = questionState();
    Q_EMIT changed();
}

const Flashcard* ReviewModel::shown() const {
    return session_ == nullptr || !shownId_ ? nullptr : desk_->cards().cards().find(*shownId_);
}

/// Options are chosen, never typed.
ReviewModel::State ReviewModel::questionState() const {
    return typeAnswers() && face_.options.isEmpty() ? State::typing : State::question;
}

void ReviewModel::start(const QString& page, const QString& place) {
    if (desk_ == nullptr) return;
    leave();
    scope_.page = page.isEmpty() ? std::nullopt : std::optional(fromQml<PageId>(page));
    scope_.place = page.isEmpty() ? placeFromQml(place) : std::nullopt;
    title_ = titleOfScope(*desk_, scope_);
    subtitle_ = notebooksOfScope(*desk_, scope_);
    session_ = std::make_unique<ReviewSession>(desk_->cards(), desk_->library(), desk_->settings(),
                                               desk_->ports().calendar, scope_, now());
    deal();
}

void ReviewModel::leave() {
    stopChecking();
    waiting_.cancel();
    session_.reset();
    given_.clear();
    hadCards_ = false;
    shownId_.reset();
    state_ = State::idle;
    Q_EMIT changed();
}

void ReviewModel::deal() {
    stopChecking();
    waiting_.cancel();
    remaining_ = session_->remaining();
    chosen_ = -1;
    grade_ = {};
    ratings_.clear();
    suggested_ = Rating::good;
    if (const Flashcard* const card = session_->current()) {
        shownId_ = card->id;
        hadCards_ = true;
        face_ = faceOf(*card, desk_->library());
        state_ = questionState();
        thinking_.start();
    } else {
        end();
    }
    Q_EMIT changed();
    Q_EMIT dealt();
}

void ReviewModel::end() {
    shownId_.reset();
    face_ = {};
    state_ = hadCards_ ? State::done : State::empty;
    const ReviewSession::Summary summary = session_->summary(now());
    std::vector<Rating> ratings;
    std::ranges::transform(given_, std::back_inserter(ratings), &Given::rating);
    outcome_ = outcomeOf(summary, ratings, now());
    const auto next =
        nextReview(desk_->cards(), desk_->library(), desk_->settings(), desk_->ports().calendar, {}, now());
    outcome_.moreWaiting = next && *next <= now();
    emptyText_ = whyNothingIsDue(*desk_, summary.nextDue);
    awaitNextCard(summary.nextDue);
}

/// A learning card that falls due while the end is shown comes back.
void ReviewModel::awaitNextCard(std::optional<Date> nextDue) {
    if (!nextDue) return;
    const double wait = std::clamp(*nextDue - ReviewSession::kLearnAhead - now(), kShortestWait, kLongestWait);
    waiting_ = desk_->loop().postAfter(wait, [this] { refresh(); });
}

/// Follows what has become of cards and pages; what is shown stays as long as it can.
void ReviewModel::refresh() {
    if (session_ == nullptr) return;
    session_->refresh(now());
    const Flashcard* const card = session_->current();
    if (card == nullptr ? shownId_.has_value() : shownId_ != card->id) return deal();
    remaining_ = session_->remaining();
    if (card == nullptr) {
        end();
    } else {
        face_ = faceOf(*card, desk_->library());
        if (awaitsAnswer()) state_ = questionState();
    }
    Q_EMIT changed();
}

void ReviewModel::reveal() {
    if (awaitsAnswer() || state_ == State::checking) showAnswer({}, Rating::good);
}

void ReviewModel::chooseOption(int index) {
    const Flashcard* const card = shown();
    if (state_ != State::question || card == nullptr || index < 0 || index >= face_.options.size()) return;
    chosen_ = index;
    const auto& option = card->options[static_cast<std::size_t>(index)];
    const AnswerGrade grade = checkAnswer(contentOf(*card), option, desk_->ports().text);
    showAnswer(noteOf(grade), suggestedRating(grade.verdict));
}

void ReviewModel::answerTyped(const QStringList& typed) {
    const Flashcard* const card = shown();
    if (state_ != State::typing || card == nullptr || typed.isEmpty()) return;
    std::vector<std::string> texts;
    std::ranges::transform(typed, std::back_inserter(texts), [](const QString& text) { return text.toStdString(); });
    const QString shownAs = typed.join(QString::fromUtf8(kClozeTermSeparator)).trimmed();
    const CardContent content = contentOf(*card);
    if (desk_->settings().boolean(kAiGradingKey).value_or(false)) return check(content, texts, shownAs);
    const AnswerGrade grade = content.kind == FlashcardKind::cloze
                                  ? checkBlanks(content, texts, desk_->ports().text)
                                  : checkAnswer(content, texts.front(), desk_->ports().text);
    GradeNote note = noteOf(grade);
    note.typed = shownAs;
    showAnswer(note, suggestedRating(grade.verdict));
}

void ReviewModel::check(const CardContent& content, const std::vector<std::string>& typed, const QString& shownAs) {
    if (grader_ == nullptr) {
        AISystem& ai = desk_->ai();
        grader_ =
            std::make_unique<AnswerGrader>(desk_->loop(), [&ai](const AISettings& settings, std::stop_token stop) {
                return ai.makeProvider(settings, std::move(stop));
            });
    }
    state_ = State::checking;
    Q_EMIT changed();
    const AISettings settings = readAISettings(desk_->settings());
    grader_->grade(settings, gradeRequestFor(content, joined(typed, kClozeTermSeparator), settings.language),
                   [this, shownAs](const AIResult<AnswerGrade>& grade) {
                       if (state_ != State::checking) return;
                       GradeNote note = grade ? noteOf(*grade)
                                              : GradeNote{.verdict = "failed",
                                                          .feedback = tr("Couldn't check automatically. Compare with "
                                                                         "the answer:"),
                                                          .detail = toQml(grade.error().text()),
                                                          .typed = {}};
                       note.typed = shownAs;
                       showAnswer(note, grade ? suggestedRating(grade->verdict) : Rating::good);
                   });
}

void ReviewModel::stopChecking() {
    if (state_ == State::checking) grader_->cancel();
}

void ReviewModel::showAnswer(const GradeNote& grade, Rating suggested) {
    const Flashcard* const card = shown();
    if (card == nullptr) return;
    stopChecking();
    grade_ = grade;
    suggested_ = suggested;
    ratings_.clear();
    for (const RatingChoice& choice : ratingChoices(card->memory, now(), desk_->settings())) {
        ratings_.append(QVariant::fromValue(choice));
    }
    state_ = State::answer;
    Q_EMIT changed();
    Q_EMIT turned();
}

void ReviewModel::rate(int rating) {
    if (state_ != State::answer || !shownId_ || rating < 1 || rating > 4) return;
    if (shown() == nullptr) return refresh();
    const double seconds = static_cast<double>(thinking_.elapsed()) / kMillisecondsPerSecond;
    const auto given = static_cast<Rating>(rating);
    given_.push_back({*shownId_, given});
    if (given == Rating::again) Q_EMIT reacted("fail");
    if (given == Rating::good || given == Rating::easy) Q_EMIT reacted("win");
    switch (session_->rate(given, now(), std::min(seconds, kLongestThought))) {
        case ReviewSession::LeechNotice::suspended: tell(toQml(std::string(kSuspendedAsLeech))); break;
        case ReviewSession::LeechNotice::staysInReview: tell(toQml(std::string(kLeechStaysInReview))); break;
        case ReviewSession::LeechNotice::none: break;
    }
    deal();
}

void ReviewModel::undo() {
    if (session_ == nullptr) return;
    const std::int64_t ratings = session_->summary(now()).ratings;
    if (!session_->undo(now())) return tell(tr("There is nothing to take back."));
    if (session_->summary(now()).ratings < ratings) {
        // That of the card that is back; when its page has gone it is not, and the last one is all that can be told.
        const Flashcard* const back = session_->current();
        const auto lost = std::ranges::find_if(given_.rbegin(), given_.rend(), [&](const Given& given) {
            return back == nullptr || given.card == back->id;
        });
        if (lost != given_.rend()) given_.erase(std::next(lost).base());
    }
    deal();
}

void ReviewModel::suspend() {
    if (shown() == nullptr) return;
    session_->suspend(now());
    tell(tr("Suspended. It won't come up in reviews."));
    deal();
}

void ReviewModel::toggleFlag() {
    const Flashcard* const card = shown();
    if (card == nullptr) return;
    desk_->cards().setFlagged(*shownId_, !card->flagged);
    face_.flagged = shown()->flagged;
    Q_EMIT changed();
}

QVariantMap ReviewModel::draft() const { return shown() == nullptr ? QVariantMap() : draftOf(contentOf(*shown())); }

QString ReviewModel::problemOf(const QVariantMap& draft) const {
    if (shown() == nullptr) return tr("This card is gone.");
    return toQml(contentProblem(withDraft(contentOf(*shown()), draft)).value_or(""));
}

void ReviewModel::edit(const QVariantMap& draft) {
    if (shown() == nullptr || !problemOf(draft).isEmpty()) return;
    desk_->cards().edit(*shownId_, withDraft(contentOf(*shown()), draft));
    refresh();
}

void ReviewModel::tell(const QString& sentence) {
    notice_ = sentence;
    Q_EMIT noticed();
}

bool ReviewModel::press(int key, int modifiers) {
    constexpr int kCommands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if ((modifiers & kCommands) != 0) {
        if (key != Qt::Key_Z || (modifiers & kCommands) != Qt::ControlModifier) return false;
        undo();
        return true;
    }
    if (key == Qt::Key_Escape) {
        Q_EMIT leaveAsked();
        return true;
    }
    if (key == Qt::Key_U) {
        undo();
        return true;
    }
    return shownId_ && pressOnCard(key);
}

bool ReviewModel::pressOnCard(int key) {
    const bool goesOn = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
    if (goesOn && state_ == State::answer) {
        rate(suggested());
    } else if (goesOn) {
        reveal();
    } else if (key >= Qt::Key_1 && key <= Qt::Key_9) {
        state_ == State::answer ? rate(key - Qt::Key_0) : chooseOption(key - Qt::Key_1);
    } else if (key == Qt::Key_S) {
        suspend();
    } else if (key == Qt::Key_F) {
        toggleFlag();
    } else if (key == Qt::Key_E) {
        Q_EMIT editAsked();
    } else if (key == Qt::Key_O) {
        Q_EMIT pageAsked(face_.pageId);
    } else {
        return false;
    }
    return true;
}

}  // namespace tessary
