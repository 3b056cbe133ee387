#pragma once

#include "ai/ai_provider.h"
#include "ai/ai_settings.h"
#include "cli/command_context.h"
#include "cli/interrupts.h"

namespace tessary {

/// Has an answer judged while the main loop goes on; Ctrl-C gives it up.
[[nodiscard]] AIResult<AnswerGrade> gradeInBackground(CommandContext& context, const Interrupts& interrupts,
                                                      const AISettings& settings, GradeRequest request);

}  // namespace tessary
