#include "cli/progress_line.h"

#include <algorithm>

namespace tessary {

ProgressLine::~ProgressLine() {
    if (shown_) streams_.err << "\r\x1b[K" << std::flush;
}

void ProgressLine::show(double fraction, const std::string& text, Weight weight) {
    if (text == last_) return;
    if (streams_.errIsTerminal) {
        constexpr std::size_t kBarColumns = 24;
        const auto filled = static_cast<std::size_t>(std::clamp(fraction, 0.0, 1.0) * kBarColumns);
        streams_.err << "\r\x1b[K[" << std::string(filled, '#') << std::string(kBarColumns - filled, '.') << "] "
                     << text << std::flush;
        shown_ = true;
    } else {
        const int tenth = static_cast<int>(fraction * 10);
        if (weight == Weight::detail && tenth == lastTenth_) return;
        lastTenth_ = tenth;
        streams_.err << text << '\n';
    }
    last_ = text;
}

}  // namespace tessary
