#pragma once

#include <string_view>

class QObject;

namespace tessary {

/// With TESSARY_TRACE_START in the environment each stage of the start is told on stderr, in milliseconds since the
/// process began: truncated by the system to its clock ticks, so up to 10 ms too many. Without it nothing happens.
void traceStart(std::string_view stage);

/// Traces "first frame" when the first one of this window has been handed to the display. `window` may be null.
void traceFirstFrame(QObject* window);

}  // namespace tessary
