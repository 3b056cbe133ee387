#pragma once

#include <QtCore/QString>

#include "platform/clock.h"

namespace tessary {

/// "just now", "14 min ago", "3 h ago", "yesterday", "12 Nov", "12 Nov 2024".
[[nodiscard]] QString editedText(Date moment, Date now, const LocalCalendar& calendar);

}  // namespace tessary
