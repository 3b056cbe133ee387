#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "ai/ai_provider.h"
#include "ai/ai_settings.h"
#include "ai/page_source.h"
#include "ai/source_chunks.h"
#include "platform/sleeper.h"
#include "platform/text_services.h"
#include "platform/thermal_state.h"

namespace tessary {

/// What one run is to do.
struct GenerationPlan {
    PageSource page;
    SourceChoice source = SourceChoice::whole;
    CardRequest request;                    ///< its count is passed over when there is an `amount`
    std::optional<CardAmount> amount;       ///< the count follows from the length of the source
    double cardsPerPage = 1.5;              ///< for `amount`
    std::int64_t maxCards = 60;             ///< for `amount`
    bool makeSummary = true;
    bool gentle = false;                    ///< pause between requests
    std::vector<std::string> existingFronts;
};

struct GenerationProgress {
    enum class Phase { reading, writing, retrying, pausing, summarising };

    Phase phase = Phase::reading;
    std::string text;       ///< for the user
    double fraction = 0;    ///< 0 to 1, of the whole run

    friend bool operator==(const GenerationProgress&, const GenerationProgress&) = default;
};

/// Who follows a run. Called on the run's thread.
class GenerationListener {
public:
    virtual ~GenerationListener() = default;
    virtual void progressed(const GenerationProgress& progress) = 0;
    /// Never empty; to be stored at once.
    virtual void wrote(std::vector<GeneratedCard> cards) = 0;
    virtual void summarised(Summary summary) = 0;
    /// A line for the console: what went wrong on the way.
    virtual void noted(std::string line) = 0;
};

/// How a run ended.
struct GenerationOutcome {
    enum class End { done, failed, cancelled };

    End end = End::done;
    std::string text;                   ///< for the user
    std::size_t cardsAdded = 0;
    std::vector<std::string> problems;  ///< of a run that is done: what went wrong on the way, for the user
    std::size_t duplicates = 0;         ///< cards left out, since others ask the same
    bool providerFailed = false;        ///< of a run that failed: a look at the provider's settings may help

    friend bool operator==(const GenerationOutcome&, const GenerationOutcome&) = default;
};

/// What a run stands on. All of it outlives the run and is for any thread.
struct GenerationPorts {
    PdfReader& pdfs;
    ThermalState& thermal;
    Sleeper& sleeper;
    const TextServices& text;
};

/// Makes the provider on the run's own thread: the keychain may have to be asked.
using ProviderMaker = std::function<AIResult<std::unique_ptr<AIProvider>>(std::stop_token)>;

/// Reads the source, asks the provider for cards chunk by chunk, each a second time when it fails, and for a summary.
/// Goes on after a chunk that failed for good, unless the key is at fault. Blocks; returns within 50 ms when stopped
/// (between two pages of a PDF). Never throws.
[[nodiscard]] GenerationOutcome runGeneration(const GenerationPlan& plan, const ProviderMaker& makeProvider,
                                              const GenerationPorts& ports, GenerationListener& listener,
                                              std::stop_token stop);

/// The cards wanted of a source: `cardsPerPage` for each page of a PDF or 1,800 characters, at least 5; twice that when
/// many are wanted; at most `maxCards`.
[[nodiscard]] std::int64_t cardCountFor(const std::vector<SourceChunk>& chunks, CardAmount amount, double cardsPerPage,
                                        std::int64_t maxCards);

/// "12 cards added".
[[nodiscard]] std::string cardsAddedText(std::size_t count);

}  // namespace tessary
