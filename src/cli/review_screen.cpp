#include "cli/review_screen.h"

#include <array>

#include <fmt/format.h>

#include "base/text.h"

namespace tessary {
namespace {

constexpr std::string_view kIndent = "  ";

void removeLastCharacter(std::string& text, const TextServices& services) {
    const std::size_t count = services.characterCount(text);
    if (count > 0) text.resize(services.prefix(text, count - 1).size());
}

std::string duration(double seconds) {
    const auto whole = static_cast<long long>(seconds + 0.5);
    if (whole < 60) return fmt::format("{} s", whole);
    return fmt::format("{} min {} s", whole / 60, whole % 60);
}

}  // namespace

std::string ReviewScreen::inked(Ink ink, std::string_view text) const {
    if (!look_.color) return std::string(text);
    constexpr std::array kCodes{"2", "1", "36", "32", "31"};
    return fmt::format("\x1b[{}m{}\x1b[0m", kCodes[static_cast<std::size_t>(ink)], text);
}

void ReviewScreen::paragraph(std::string_view text, std::optional<Ink> ink) {
    for (const std::string& line : wrapped(text, look_.columns - kIndent.size(), text_)) {
        out_ << kIndent << (ink ? inked(*ink, line) : line) << '\n';
    }
}

void ReviewScreen::question(const Flashcard& card, std::string_view place, const ReviewSession::Remaining& remaining) {
    const std::string counts =
        fmt::format("New {} · Learning {} · Review {}", remaining.fresh, remaining.learning, remaining.review);
    out_ << '\n' << inked(Ink::dim, std::string(look_.columns > 60 ? 60 : look_.columns, '-')) << '\n';
    out_ << inked(Ink::dim, counts) << (card.flagged ? "  ⚑" : "") << '\n';
    out_ << inked(Ink::dim, cutToColumns(place, look_.columns, text_)) << "\n\n";
    paragraph(card.kind == FlashcardKind::cloze ? clozeWithBlanks(card.front, "[…]") : card.front, Ink::bold);
    options(card, {});
    out_ << '\n' << std::flush;
}

void ReviewScreen::options(const Flashcard& card, std::optional<std::int64_t> right) {
    for (std::size_t i = 0; i < card.options.size(); ++i) {
        const bool isRight = right == static_cast<std::int64_t>(i);
        const std::string line = fmt::format("{}. {}{}", i + 1, card.options[i], isRight ? "  ✓" : "");
        paragraph(line, isRight ? std::optional(Ink::good) : std::nullopt);
    }
}

void ReviewScreen::answer(const Flashcard& card) {
    if (card.kind == FlashcardKind::cloze) {
        paragraph(clozeRevealed(card.front), Ink::accent);
    } else if (card.kind == FlashcardKind::multipleChoice) {
        options(card, card.correctIndex);
    } else {
        paragraph(card.back, Ink::accent);
    }
    if (card.explanation) paragraph(*card.explanation, Ink::dim);
    if (card.sourcePage) paragraph(fmt::format("Page {}", *card.sourcePage), Ink::dim);
    out_ << '\n' << std::flush;
}

void ReviewScreen::ratings(const RatingOutcomes& outcomes, Rating suggested, Date now) {
    const std::array<std::pair<Rating, const CardMemory*>, 4> all{{{Rating::again, &outcomes.again},
                                                                   {Rating::hard, &outcomes.hard},
                                                                   {Rating::good, &outcomes.good},
                                                                   {Rating::easy, &outcomes.easy}}};
    constexpr std::array kNames{"Again", "Hard", "Good", "Easy"};
    std::string line;
    for (const auto& [rating, memory] : all) {
        const auto number = static_cast<std::size_t>(rating);
        std::string label = fmt::format("{} {}", number, kNames[number - 1]);
        if (look_.showIntervals) label += " " + formatInterval(memory->due - now);
        line += (line.empty() ? "" : "   ") + (rating == suggested ? inked(Ink::bold, label) : label);
    }
    out_ << kIndent << line << '\n'
         << inked(Ink::dim, "  Enter takes ") << kNames[static_cast<std::size_t>(suggested) - 1]
         << inked(Ink::dim, " · u undo · s suspend · f flag · e edit · q quit · ? help") << '\n'
         << std::flush;
}

void ReviewScreen::flipPrompt() {
    out_ << inked(Ink::dim, "  Space shows the answer · u undo · s suspend · f flag · e edit · q quit · ? help") << '\n'
         << std::flush;
}

void ReviewScreen::grade(const AnswerGrade& grade) {
    const bool wrong = grade.verdict == AnswerGrade::Verdict::wrong;
    paragraph(grade.feedback, wrong ? Ink::bad : Ink::good);
    if (!grade.missing.empty()) paragraph("Missing: " + joined(grade.missing, ", "));
    out_ << '\n';
}

void ReviewScreen::notice(std::string_view text) {
    paragraph(text, Ink::dim);
    out_ << std::flush;
}

void ReviewScreen::help() {
    notice(
        "Space or Enter: show the answer, then rate as suggested\n"
        "1 Again, 2 Hard, 3 Good, 4 Easy: rate the card\n"
        "u: take the last rating back\n"
        "s: suspend the card, which takes it out of reviews\n"
        "f: flag the card, or remove the flag\n"
        "e: edit the card\n"
        "q: quit; everything is saved");
}

void ReviewScreen::summary(const ReviewSession::Summary& summary, Date now) {
    out_ << '\n';
    if (summary.ratings > 0) {
        const double share = 100.0 * static_cast<double>(summary.remembered) / static_cast<double>(summary.ratings);
        notice(fmt::format("{} in {}, {:.0f}% right.",
                           counted(static_cast<std::size_t>(summary.cards), "card", "cards"), duration(summary.seconds),
                           share));
    }
    if (!summary.nextDue) return;
    const double wait = *summary.nextDue - now;
    notice(wait <= 0 ? "More cards are waiting." : "The next card is due in " + formatInterval(wait) + ".");
}

std::optional<std::string> ReviewScreen::readLine(Keyboard& keyboard, std::string_view prompt, bool& escaped) {
    std::string line;
    escaped = false;
    const auto show = [&] {
        if (keyboard.isTerminal()) out_ << "\r\x1b[K" << kIndent << prompt << withoutControls(line) << std::flush;
    };
    if (!keyboard.isTerminal()) out_ << kIndent << prompt << std::flush;
    for (show();; show()) {
        const Key key = keyboard.next();
        if (key.kind == Key::Kind::character) line += key.text;
        if (key.kind == Key::Kind::backspace) removeLastCharacter(line, text_);
        if (key.kind == Key::Kind::escape) escaped = true;
        const bool done = key.kind == Key::Kind::enter || key.kind == Key::Kind::end || escaped;
        if (!done) continue;
        out_ << '\n' << std::flush;
        if (key.kind == Key::Kind::end && line.empty()) return std::nullopt;
        return scrubbedUtf8(line);
    }
}

}  // namespace tessary
