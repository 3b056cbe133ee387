#pragma once

#include <string>

#include "ai/ai_provider_kind.h"
#include "base/text.h"
#include "cli/command_context.h"

namespace tessary {

/// The value of an enumeration that an option names. Throws UsageFailure with all names.
template <HasEnumNames E>
[[nodiscard]] E namedOrFail(std::string_view option, std::string_view text) {
    if (const std::optional<E> value = enumNamed<E>(text)) return *value;
    std::vector<std::string> names;
    for (const auto& [value, name] : EnumNames<E>::names) names.emplace_back(name);
    throw UsageFailure(std::string(option) + " takes " + joined(names, ", ") + ", not \"" + std::string(text) + "\".");
}

[[nodiscard]] inline AIProviderKind providerNamed(std::string_view text) {
    return namedOrFail<AIProviderKind>("PROVIDER", asciiLowered(text));
}

}  // namespace tessary
