#pragma once

#include "platform/on_device_model.h"

/// The shapes that the on-device model is guided into. What comes back is read like any provider's JSON.
namespace tessary {

[[nodiscard]] const GuidedShape& cardBatchShape();     ///< AICardBatch
[[nodiscard]] const GuidedShape& summaryDraftShape();  ///< AISummaryDraft
[[nodiscard]] const GuidedShape& gradeDraftShape();    ///< AIGradeDraft

}  // namespace tessary
