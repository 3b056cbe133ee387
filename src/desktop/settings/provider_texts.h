#pragma once

#include <QtCore/QStringList>

#include "ai/ai_error.h"

namespace tessary {

/// What one should know of a provider before using it.
[[nodiscard]] QStringList notesOf(AIProviderKind kind);
/// How to get going with it.
[[nodiscard]] QStringList stepsOf(AIProviderKind kind);
/// The setting that names its model, and the one that says where its server is; empty when there is none.
[[nodiscard]] QString modelSettingOf(AIProviderKind kind);
[[nodiscard]] QString addressSettingOf(AIProviderKind kind);
/// What it lacks and what to do about it; some sentences more than the error has.
[[nodiscard]] QString adviceFor(AIProviderKind kind, const AIError& problem);

}  // namespace tessary
