#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/keyboard.h"
#include "cli/output.h"
#include "study/answer_check.h"
#include "study/review_session.h"
#include "study/scheduler.h"

namespace tessary {

/// How a review looks in a terminal: cards, prompts, results. Plain text where it is no terminal.
class ReviewScreen {
public:
    struct Look {
        bool color = false;
        bool showIntervals = true;
        std::size_t columns = 80;
    };

    /// Both arguments outlive the screen.
    ReviewScreen(std::ostream& out, const TextServices& text, Look look) : out_(out), text_(text), look_(look) {}

    void question(const Flashcard& card, std::string_view place, const ReviewSession::Remaining& remaining);
    void answer(const Flashcard& card);
    /// The four ratings with when each brings the card back; `suggested` is what Enter and Space choose.
    void ratings(const RatingOutcomes& outcomes, Rating suggested, Date now);
    void flipPrompt();
    void grade(const AnswerGrade& grade);
    void notice(std::string_view text);
    void help();
    void summary(const ReviewSession::Summary& summary, Date now);

    /// Lets the user type a line and change it; absent at the end of input, and with `escaped` set when Escape was
    /// pressed. Echoes only for a terminal.
    std::optional<std::string> readLine(Keyboard& keyboard, std::string_view prompt, bool& escaped);

private:
    enum class Ink { dim, bold, accent, good, bad };
    [[nodiscard]] std::string inked(Ink ink, std::string_view text) const;
    void paragraph(std::string_view text, std::optional<Ink> ink = {});
    void options(const Flashcard& card, std::optional<std::int64_t> right);

    std::ostream& out_;
    const TextServices& text_;
    Look look_;
};

}  // namespace tessary
