#include "ai/generation_run.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include <fmt/format.h>

#include "ai/front_memory.h"
#include "ai/text_cleaning.h"

namespace tessary {
namespace {

using Phase = GenerationProgress::Phase;
using End = GenerationOutcome::End;

constexpr double kCoolingStep = 5;       ///< seconds
constexpr double kLongestCooling = 180;  ///< seconds; then the run goes on, warm or not
constexpr double kGentlePause = 5;       ///< seconds
constexpr double kReadingShare = 0.1;    ///< of the progress bar
constexpr double kSummaryShare = 0.1;    ///< of the progress bar

/// One run. Each step either goes on or leaves the error that ends the run.
class Run {
public:
    Run(const GenerationPlan& plan, const GenerationPorts& ports, GenerationListener& listener, std::stop_token stop)
        : plan_(plan),
          ports_(ports),
          listener_(listener),
          stop_(std::move(stop)),
          fronts_(plan.existingFronts, ports.text) {}

    GenerationOutcome run(const ProviderMaker& makeProvider) {
        AIResult<std::unique_ptr<AIProvider>> provider = makeProvider(stop_);
        if (!provider) return failed(provider.error(), Fault::provider);
        provider_ = *std::move(provider);
        if (const AIResult<void> ready = provider_->prepare(stop_); !ready) {
            return failed(ready.error(), Fault::provider);
        }
        const AIResult<std::string> source = readSource();
        if (!source) return failed(source.error(), Fault::none);
        writeCards(*source);
        if (stop_.stop_requested()) return failed(AIError::cancelled(), Fault::none);
        if (added_ == 0 && lastError_) return failed(*lastError_, Fault::provider);
        if (added_ == 0) return failed(AIError::unavailable("The AI couldn't write any cards."), Fault::none);
        if (plan_.makeSummary) writeSummary(*source);
        if (stop_.stop_requested()) return failed(AIError::cancelled(), Fault::none);
        const std::string text =
            summaryFailed_ ? "Cards ready — the summary couldn't be written" : cardsAddedText(added_);
        return {.end = End::done,
                .text = text,
                .cardsAdded = added_,
                .problems = std::move(problems_),
                .duplicates = duplicates_};
    }

private:
    enum class Fault { none, provider };

    GenerationOutcome failed(const AIError& error, Fault fault) const {
        const bool cancelled = error.kind == AIError::Kind::cancelled || stop_.stop_requested();
        return {.end = cancelled ? End::cancelled : End::failed,
                .text = cancelled ? AIError::cancelled().text() : error.text(),
                .cardsAdded = added_,
                .problems = {},
                .duplicates = duplicates_,
                .providerFailed = fault == Fault::provider && !cancelled};
    }

    void report(Phase phase, std::string text, double fraction) {
        listener_.progressed({.phase = phase, .text = std::move(text), .fraction = fraction});
    }

    /// The cleaned text.
    AIResult<std::string> readSource() {
        const AIResult<std::string> raw = gatherText(
            plan_.page, plan_.source, ports_.pdfs,
            [this](int page, int pages) {
                report(Phase::reading, fmt::format("Reading page {} of {}", page, pages),
                       kReadingShare * (page - 1) / pages);
            },
            stop_);
        if (!raw) return std::unexpected(raw.error());
        std::string cleaned = cleanedText(*raw, ports_.text);
        if (cleaned.empty()) return std::unexpected(noTextError(plan_.page, plan_.source));
        return cleaned;
    }

    void writeCards(const std::string& source) {
        const std::vector<SourceChunk> all = chunked(source, provider_->maxChunkCharacters(), ports_.text);
        const std::int64_t count =
            plan_.amount ? cardCountFor(all, *plan_.amount, plan_.cardsPerPage, plan_.maxCards) : plan_.request.count;
        const std::vector<std::int64_t> shares = sharedCounts(all, count);
        std::vector<Part> parts;
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (shares[i] > 0) parts.push_back({.chunk = &all[i], .cards = shares[i], .number = parts.size() + 1});
        }
        for (Part& part : parts) {
            part.of = parts.size();
            if (part.number > 1) pause(part);
            if (stop_.stop_requested() || !writePart(part)) return;
        }
    }

    struct Part {
        const SourceChunk* chunk = nullptr;
        std::int64_t cards = 0;
        std::size_t number = 1;
        std::size_t of = 1;
    };

    [[nodiscard]] double fractionAt(const Part& part) const {
        const double writing = 1 - kReadingShare - (plan_.makeSummary ? kSummaryShare : 0);
        return kReadingShare + writing * static_cast<double>(part.number - 1) / static_cast<double>(part.of);
    }

    void pause(const Part& part) {
        if (plan_.gentle) ports_.sleeper.sleep(kGentlePause, stop_);
        for (double waited = 0; waited < kLongestCooling && !stop_.stop_requested(); waited += kCoolingStep) {
            if (ports_.thermal.level() < ThermalLevel::serious) return;
            report(Phase::pausing, "Your Mac is warm — pausing to let it cool…", fractionAt(part));
            ports_.sleeper.sleep(kCoolingStep, stop_);
        }
    }

    /// False when going on with the next part is of no use.
    bool writePart(const Part& part) {
        report(Phase::writing, fmt::format("Writing cards — part {} of {}", part.number, part.of), fractionAt(part));
        AIResult<std::vector<GeneratedCard>> cards = ask(part);
        if (!cards && cards.error().mayPass() && !stop_.stop_requested()) {
            report(Phase::retrying, fmt::format("Retrying part {} of {}", part.number, part.of), fractionAt(part));
            cards = ask(part);
        }
        if (!cards) return note(part, cards.error());
        keep(*std::move(cards), part);
        return true;
    }

    AIResult<std::vector<GeneratedCard>> ask(const Part& part) {
        CardRequest request = plan_.request;
        request.count = part.cards;
        return provider_->generateCards(part.chunk->text, request, fronts_.fronts(), stop_);
    }

    bool note(const Part& part, const AIError& error) {
        lastError_ = error;
        if (error.kind == AIError::Kind::cancelled) return false;
        const std::string wait = error.retryAfter ? fmt::format(" (asked to wait {} s)", *error.retryAfter) : "";
        listener_.noted(
            fmt::format("Notara: cards of part {} of {} failed — {}{}", part.number, part.of, error.text(), wait));
        problems_.push_back(fmt::format("Part {} of {} has no cards: {}", part.number, part.of, error.text()));
        return error.mayPass();
    }

    void keep(std::vector<GeneratedCard> cards, const Part& part) {
        std::vector<GeneratedCard> fresh;
        for (GeneratedCard& card : cards) {
            if (std::cmp_equal(fresh.size(), part.cards)) break;
            if (!fronts_.add(card.front)) {
                ++duplicates_;
                continue;
            }
            card.sourcePage = pageIn(*part.chunk, card.sourcePage);
            fresh.push_back(std::move(card));
        }
        if (fresh.empty() || stop_.stop_requested()) return;
        added_ += fresh.size();
        listener_.wrote(std::move(fresh));
    }

    /// A page that the chunk does not hold was made up; the chunk's only page is the right one then.
    static std::optional<std::int64_t> pageIn(const SourceChunk& chunk, std::optional<std::int64_t> page) {
        if (page && chunk.pages.contains(*page)) return page;
        return chunk.pages.size() == 1 ? std::optional(*chunk.pages.begin()) : std::nullopt;
    }

    void writeSummary(const std::string& source) {
        report(Phase::summarising, "Summarising…", 1 - kSummaryShare);
        const std::string_view text = ports_.text.prefix(source, provider_->maxChunkCharacters());
        AIResult<Summary> summary = provider_->summarise(text, plan_.request.language, stop_);
        if (stop_.stop_requested()) return;
        if (summary) return listener_.summarised(*std::move(summary));
        summaryFailed_ = true;
        problems_.push_back(summary.error().text());
        listener_.noted("Notara: summary failed — " + summary.error().text());
    }

    const GenerationPlan& plan_;
    const GenerationPorts& ports_;
    GenerationListener& listener_;
    std::stop_token stop_;
    std::unique_ptr<AIProvider> provider_;
    FrontMemory fronts_;
    std::size_t added_ = 0;
    std::size_t duplicates_ = 0;
    std::optional<AIError> lastError_;
    std::vector<std::string> problems_;
    bool summaryFailed_ = false;
};

}  // namespace

GenerationOutcome runGeneration(const GenerationPlan& plan, const ProviderMaker& makeProvider,
                                const GenerationPorts& ports, GenerationListener& listener, std::stop_token stop) {
    try {
        return Run(plan, ports, listener, std::move(stop)).run(makeProvider);
    } catch (const std::exception& failure) {
        listener.noted(std::string("Notara: generation failed — ") + failure.what());
        return {
            .end = End::failed, .text = "Something went wrong while writing cards.", .cardsAdded = 0, .problems = {}};
    }
}

std::int64_t cardCountFor(const std::vector<SourceChunk>& chunks, CardAmount amount, double cardsPerPage,
                          std::int64_t maxCards) {
    constexpr double kBytesPerPage = 1800;
    constexpr double kFewest = 5;
    double length = 0;
    double pdfPages = 0;
    std::int64_t last = 0;
    for (const SourceChunk& chunk : chunks) {
        length += static_cast<double>(chunk.text.size());
        pdfPages += static_cast<double>(chunk.pages.size());
        if (chunk.pages.contains(last)) --pdfPages;  // the marker of a page that goes on
        if (!chunk.pages.empty()) last = *chunk.pages.rbegin();
    }
    const double pages = std::max(pdfPages, std::ceil(length / kBytesPerPage));
    const double normal = std::max(kFewest, std::round(pages * cardsPerPage));
    const double wanted = amount == CardAmount::many ? normal * 2 : normal;
    return static_cast<std::int64_t>(std::min(wanted, static_cast<double>(maxCards)));
}

std::string cardsAddedText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " card added" : " cards added");
}

}  // namespace tessary
