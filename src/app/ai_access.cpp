#include "app/ai_access.h"

#include <algorithm>

#include "base/text.h"

namespace tessary {
namespace {

AIResult<void> prepareProvider(AISystem& ai, const AISettings& settings, const std::stop_token& stop) {
    AIResult<std::unique_ptr<AIProvider>> provider = ai.makeProvider(settings, stop);
    return provider ? (*provider)->prepare(stop) : std::unexpected(provider.error());
}

}  // namespace

void lookAtProviders(AISystem& ai, const AISettings& settings, std::span<const AIProviderKind> kinds,
                     const std::stop_token& stop, const std::function<void(const ProviderState&)>& tell) {
    std::optional<AIError> keychainProblem;
    for (const AIProviderKind kind : kinds) {
        if (stop.stop_requested()) return;
        ProviderState state{.kind = kind, .hasKey = false, .problem = {}};
        if (needsKey(kind) && !keychainProblem) {
            const auto key = ai.secrets().read(keyNameOf(kind), stop);
            if (!key) keychainProblem = keychainError(key.error());
            state.hasKey = key && !trimmed(key->value_or("")).empty();
        }
        if (needsKey(kind)) state.problem = keychainProblem;
        AISettings asked = settings;
        asked.provider = kind;
        if (!state.problem) {
            if (const AIResult<void> ready = prepareProvider(ai, asked, stop); !ready) state.problem = ready.error();
        }
        tell(state);
    }
}

AIResult<void> tryProvider(AISystem& ai, const AISettings& settings, const std::stop_token& stop) {
    AIResult<std::unique_ptr<AIProvider>> provider = ai.makeProvider(settings, stop);
    if (!provider) return std::unexpected(provider.error());
    if (const AIResult<void> ready = (*provider)->prepare(stop); !ready) return ready;
    const GradeRequest question{
        .question = "What is the capital of France?", .expected = "Paris", .answer = "Paris", .language = "English"};
    const AIResult<AnswerGrade> grade = (*provider)->grade(question, stop);
    return grade ? AIResult<void>() : std::unexpected(grade.error());
}

std::expected<std::string, std::string> checkedKey(std::string_view text) {
    std::string key(trimmed(text));
    if (key.empty()) return std::unexpected("No key was given.");
    if (!std::ranges::all_of(key, [](char c) { return c > ' ' && c <= '~'; })) {
        return std::unexpected("This is no API key: it has spaces or special characters in it.");
    }
    return key;
}

std::string describe(const SecretFailure& failure) {
    return failure.kind == SecretFailure::Kind::locked ? "it is locked" : failure.message;
}

}  // namespace tessary
