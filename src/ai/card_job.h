#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ai/card_request.h"
#include "ai/providers/ai_json_backend.h"
#include "platform/text_services.h"

namespace tessary {

/// Asks for cards about `source`, a text with "[Page N]" markers.
[[nodiscard]] JSONJob cardJob(std::string_view source, const CardRequest& request,
                              const std::vector<std::string>& existingFronts);

/// The cards of an answer that are of the requested kinds, each repaired so that it fits `contentProblem`; those that
/// can't be are left out. Fails when the answer as a whole is no object.
[[nodiscard]] AIResult<std::vector<GeneratedCard>> decodeCards(const std::string& reply, const CardRequest& request,
                                                               const TextServices& text);

}  // namespace tessary
