#include "ai/flashcard_generator.h"

#include <utility>

namespace tessary {
/// Brings what happens on the run's thread to the main thread.
class FlashcardGenerator::Reporter final : public GenerationListener {
public:
    Reporter(FlashcardGenerator& generator, const Job::Post& post) : generator_(generator), post_(post) {}

    void progressed(const GenerationProgress& progress) override {
        post_([this_ = &generator_, progress] {
            this_->state_.progress = progress;
            this_->changed.emit(this_->state_);
        });
    }
    void wrote(std::vector<GeneratedCard> cards) override {
        post_([this_ = &generator_, cards = std::move(cards)]() mutable { this_->store(std::move(cards)); });
    }
    void summarised(Summary summary) override {
        post_([this_ = &generator_, summary = std::move(summary)] { this_->store(summary); });
    }
    void noted(std::string line) override {
        post_([this_ = &generator_, line = std::move(line)] { this_->services_.console.print(line); });
    }

private:
    FlashcardGenerator& generator_;
    const Job::Post& post_;
};

GenerationOptions generationOptions(const Settings& settings) {
    const GenerationSettings chosen = readGenerationSettings(settings);
    GenerationOptions options{.settings = readAISettings(settings),
                              .source = chosen.source,
                              .request = {},
                              .amount = chosen.amount,
                              .cardsPerPage = chosen.cardsPerPage,
                              .maxCards = chosen.maxCards,
                              .makeSummary = chosen.makeSummary};
    options.request.kinds = chosen.kinds;
    options.request.difficulty = chosen.difficulty;
    options.request.language = options.settings.language;
    return options;
}

std::expected<void, std::string> FlashcardGenerator::start(const GenerationOptions& options) {
    const JournalEntry* const page = services_.library.entries().find(page_);
    if (isRunning()) return std::unexpected("Cards are being written for this page already.");
    if (page == nullptr) return std::unexpected("This page no longer exists.");
    state_ = {.phase = Phase::running, .progress = {}, .text = {}, .cards = {}, .summaryPage = {}, .problems = {}};
    job_ = std::make_unique<Job>(
        services_.loop, [this, plan = planFor(*page, options), settings = options.settings, ports = services_.ports,
                         makeProvider = services_.makeProvider](std::stop_token stop, const Job::Post& post) {
            Reporter reporter(*this, post);
            const auto maker = [&](std::stop_token token) { return makeProvider(settings, std::move(token)); };
            GenerationOutcome outcome = runGeneration(plan, maker, ports, reporter, std::move(stop));
            post([this, outcome = std::move(outcome)]() mutable { finish(std::move(outcome)); });
        });
    changed.emit(state_);
    return {};
}

void FlashcardGenerator::cancel() {
    if (job_) job_->cancel();
}

GenerationPlan FlashcardGenerator::planFor(const JournalEntry& page, const GenerationOptions& options) const {
    GenerationPlan plan{.page = options.page ? *options.page : sourceOf(page, services_.library),
                        .source = options.source,
                        .request = options.request,
                        .amount = options.amount,
                        .cardsPerPage = options.cardsPerPage,
                        .maxCards = options.maxCards,
                        .makeSummary = options.makeSummary,
                        .gentle = options.settings.gentleMode,
                        .existingFronts = {}};
    for (const auto& card : services_.cards.cards()) {
        if (card.pageID == page_) plan.existingFronts.push_back(card.front);
    }
    return plan;
}

bool FlashcardGenerator::pageIsThere() {
    if (services_.library.entries().find(page_) != nullptr) return true;
    cancel();
    return false;
}

void FlashcardGenerator::store(std::vector<GeneratedCard> cards) {
    if (!pageIsThere()) return;
    const std::vector<CardId> added = services_.cards.addCards(page_, std::move(cards), services_.clock.now());
    state_.cards.insert(state_.cards.end(), added.begin(), added.end());
    changed.emit(state_);
}

void FlashcardGenerator::store(const Summary& summary) {
    if (!pageIsThere()) return;
    JournalEntry page;
    page.title = "Summary: " + services_.library.entries().find(page_)->title;
    page.body = summaryPageBody(summary);
    page.parentID = page_;
    if (const auto added = services_.library.addPage(std::move(page))) state_.summaryPage = *added;
    changed.emit(state_);
}

void FlashcardGenerator::finish(GenerationOutcome outcome) {
    switch (outcome.end) {
        case GenerationOutcome::End::done: state_.phase = Phase::done; break;
        case GenerationOutcome::End::failed: state_.phase = Phase::failed; break;
        case GenerationOutcome::End::cancelled: state_.phase = Phase::cancelled; break;
    }
    state_.text = std::move(outcome.text);
    state_.problems = std::move(outcome.problems);
    state_.duplicates = outcome.duplicates;
    state_.providerFailed = outcome.providerFailed;
    changed.emit(state_);
}

}  // namespace tessary
