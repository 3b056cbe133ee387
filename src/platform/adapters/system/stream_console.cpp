#include "platform/adapters/system/stream_console.h"

#include <ostream>

namespace tessary {

void StreamConsole::print(std::string_view message) {
    const std::lock_guard lock(mutex_);
    stream_ << message << '\n' << std::flush;
}

}  // namespace tessary
