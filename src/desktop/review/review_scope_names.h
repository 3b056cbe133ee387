#pragma once

#include <QtCore/QString>

#include "desktop/desk/desk.h"
#include "study/review_queue.h"

namespace tessary {

/// What a sitting on `scope` is called.
[[nodiscard]] QString titleOfScope(const Desk& desk, const ReviewScope& scope);
/// The notebook of the page; that it is all pages of a notebook; of the whole library those with cards due now. Reads
/// the cards once.
[[nodiscard]] QString notebooksOfScope(const Desk& desk, const ReviewScope& scope);
/// Why nothing is due, with what to do about it.
[[nodiscard]] QString whyNothingIsDue(const Desk& desk, std::optional<Date> nextDue);

}  // namespace tessary
