#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "ai/ai_provider.h"
#include "platform/sleeper.h"
#include "platform/thermal_state.h"

namespace tessary {

/// What a scripted provider was asked and is to answer. Any thread.
class ProviderScript {
public:
    using Cards = AIResult<std::vector<GeneratedCard>>;

    std::size_t limit = 1000;             ///< characters of a chunk
    AIResult<void> ready = {};
    std::function<Cards(std::size_t call, const CardRequest&, std::stop_token)> cards;
    std::function<AIResult<Summary>(std::stop_token)> summary = [](std::stop_token) {
        return Summary{.text = "In short.", .keyPoints = {"A point"}, .glossary = {{"ATP", "Energy"}}};
    };

    struct Asked {
        std::string source;
        CardRequest request;
        std::vector<std::string> existing;
    };
    std::vector<Asked> asked;
    std::vector<std::string> summarised;
};

/// Answers as its script says; the script outlives it.
class ScriptedProvider final : public AIProvider {
public:
    explicit ScriptedProvider(ProviderScript& script) : script_(script) {}

    [[nodiscard]] std::size_t maxChunkCharacters() const override { return script_.limit; }
    [[nodiscard]] AIResult<void> prepare(std::stop_token) override { return script_.ready; }
    [[nodiscard]] AIResult<std::vector<GeneratedCard>> generateCards(std::string_view source,
                                                                     const CardRequest& request,
                                                                     const std::vector<std::string>& existingFronts,
                                                                     std::stop_token stop) override {
        script_.asked.push_back({.source = std::string(source), .request = request, .existing = existingFronts});
        return script_.cards(script_.asked.size() - 1, request, std::move(stop));
    }
    [[nodiscard]] AIResult<Summary> summarise(std::string_view source, std::string_view,
                                              std::stop_token stop) override {
        script_.summarised.emplace_back(source);
        return script_.summary(std::move(stop));
    }
    [[nodiscard]] AIResult<AnswerGrade> grade(const GradeRequest&, std::stop_token) override {
        return std::unexpected(AIError::badResponse("not scripted"));
    }

private:
    ProviderScript& script_;
};

inline GeneratedCard basicCard(std::string front, std::optional<std::int64_t> page = {}) {
    GeneratedCard card;
    card.front = std::move(front);
    card.back = "Answer";
    card.sourcePage = page;
    return card;
}

/// Gives one level after the other, and the last one for ever.
class ScriptedHeat final : public ThermalState {
public:
    [[nodiscard]] ThermalLevel level() const override {
        if (levels.size() > 1) {
            const ThermalLevel next = levels.front();
            levels.pop_front();
            return next;
        }
        return levels.front();
    }
    mutable std::deque<ThermalLevel> levels{ThermalLevel::nominal};
};

/// Does not sleep, but remembers that it should have.
class RecordingSleeper final : public Sleeper {
public:
    void sleep(double seconds, std::stop_token) override { slept.push_back(seconds); }
    std::vector<double> slept;
};

}  // namespace tessary
