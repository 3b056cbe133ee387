#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ai/generation_run.h"
#include "ai/job.h"
#include "base/signal.h"
#include "library/journal_store.h"
#include "platform/console.h"
#include "study/flashcard_store.h"

namespace tessary {

/// What the user asks for.
struct GenerationOptions {
    AISettings settings;
    SourceChoice source = SourceChoice::whole;
    std::optional<PageSource> page = {};  ///< what of the page is read, when not all of it
    CardRequest request;               ///< its count is passed over when there is an `amount`
    std::optional<CardAmount> amount;
    double cardsPerPage = 1.5;         ///< for `amount`
    std::int64_t maxCards = 60;        ///< for `amount`
    bool makeSummary = true;
};

/// As the settings have it.
[[nodiscard]] GenerationOptions generationOptions(const Settings& settings);

/// The stores and ports that a generator works with. All of them outlive it.
struct GeneratorServices {
    JournalStore& library;
    FlashcardStore& cards;
    MainLoop& loop;
    Clock& clock;
    Console& console;
    GenerationPorts ports;
    std::function<AIResult<std::unique_ptr<AIProvider>>(const AISettings&, std::stop_token)> makeProvider;
};

/// Turns one page into cards, in the background: each batch goes into the page's deck as it comes, a summary becomes a
/// subpage. Main thread only. Destroying it cancels the run; what is stored stays.
class FlashcardGenerator {
public:
    enum class Phase { idle, running, done, failed, cancelled };

    struct State {
        Phase phase = Phase::idle;
        GenerationProgress progress;        ///< while it runs
        std::string text;                   ///< at the end, for the user
        std::vector<CardId> cards;          ///< added so far
        std::optional<PageId> summaryPage;
        std::vector<std::string> problems;  ///< at the end: what went wrong on the way, for the user
        std::size_t duplicates = 0;         ///< at the end: cards left out, since others ask the same
        bool providerFailed = false;        ///< at the end: a look at the provider's settings may help
    };

    FlashcardGenerator(PageId page, GeneratorServices services) : page_(page), services_(std::move(services)) {}
    FlashcardGenerator(const FlashcardGenerator&) = delete;
    FlashcardGenerator& operator=(const FlashcardGenerator&) = delete;

    Signal<State> changed;

    [[nodiscard]] const State& state() const { return state_; }
    [[nodiscard]] bool isRunning() const { return state_.phase == Phase::running; }

    /// Refused, with a sentence for the user, while it runs, and when the page is gone.
    std::expected<void, std::string> start(const GenerationOptions& options);
    /// The run ends soon after, and says so.
    void cancel();

private:
    class Reporter;

    [[nodiscard]] GenerationPlan planFor(const JournalEntry& page, const GenerationOptions& options) const;
    void store(std::vector<GeneratedCard> cards);
    void store(const Summary& summary);
    void finish(GenerationOutcome outcome);
    [[nodiscard]] bool pageIsThere();

    PageId page_;
    GeneratorServices services_;
    State state_;
    std::unique_ptr<Job> job_;
};

}  // namespace tessary
