#pragma once

#include <functional>
#include <optional>

#include "ai/ai_error.h"
#include "app/system_ports.h"
#include "cli/review_screen.h"

namespace tessary {

enum class AnswerMode { flip, type };

/// Has a typed answer judged by the AI; blocks. Empty when answers are compared here.
using JudgeAnswer = std::function<AIResult<AnswerGrade>(const CardContent& card, const std::string& answer)>;

/// Leads through a review session by keys. Ends with the session, at the end of input, and on a signal to end.
class ReviewDialog {
public:
    /// All arguments outlive the dialog.
    ReviewDialog(ReviewSession& session, Workspace& workspace, SystemPorts& system, ReviewScreen& screen,
                 Keyboard& keyboard, AnswerMode mode, JudgeAnswer judge = {})
        : session_(session),
          workspace_(workspace),
          system_(system),
          screen_(screen),
          keyboard_(keyboard),
          mode_(mode),
          judge_(std::move(judge)) {}

    void run();

private:
    /// What is to be done after a card was shown, or a key pressed.
    enum class Next { goOn, stay, reveal, quit };

    [[nodiscard]] Date now() const { return system_.clock.now(); }
    Next oneCard(const Flashcard& card);
    Next askToFlip(CardId card);
    Next askForRating(CardId card, Rating suggested, double startedAt);
    /// The keys that work on both sides of a card.
    Next commonKey(const Key& key, CardId card);
    Next typedAnswer(const Flashcard& card, Rating& suggested);
    /// Absent when the AI was asked and could not judge.
    [[nodiscard]] std::optional<AnswerGrade> judged(const CardContent& card, const std::vector<std::string>& typed);
    void rate(Rating rating, double startedAt);
    void edit(CardId card);
    [[nodiscard]] bool offerUndoAtTheEnd();
    [[nodiscard]] std::string placeOf(const Flashcard& card) const;

    ReviewSession& session_;
    Workspace& workspace_;
    SystemPorts& system_;
    ReviewScreen& screen_;
    Keyboard& keyboard_;
    AnswerMode mode_;
    JudgeAnswer judge_;
};

}  // namespace tessary
