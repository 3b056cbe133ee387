#include "cli/secret_input.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "cli/interrupts.h"

namespace tessary {
namespace {

/// Switches a terminal's echo off for as long as it lives.
class HiddenTyping {
public:
    explicit HiddenTyping(int descriptor) : descriptor_(descriptor) {
        if (tcgetattr(descriptor, &before_) != 0) return;
        termios hidden = before_;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        changed_ = tcsetattr(descriptor, TCSAFLUSH, &hidden) == 0;
    }
    ~HiddenTyping() {
        if (changed_) tcsetattr(descriptor_, TCSAFLUSH, &before_);
    }
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;

private:
    int descriptor_;
    termios before_{};
    bool changed_ = false;
};

/// False at the end of input, and when a signal says to end.
bool waitForInput(int descriptor, const Interrupts& interrupts) {
    std::array<pollfd, 2> watched{pollfd{.fd = descriptor, .events = POLLIN, .revents = 0},
                                  pollfd{.fd = interrupts.descriptor(), .events = POLLIN, .revents = 0}};
    while (poll(watched.data(), watched.size(), -1) < 0) {
        if (errno != EINTR) return false;
    }
    return !interrupts.raised();
}

}  // namespace

std::optional<std::string> readSecret(const ProgramStreams& streams, const std::string& prompt) {
    constexpr std::size_t kLongest = 64UL * 1024;  // no key is that long
    const Interrupts interrupts;
    const bool isTerminal = isatty(streams.input) == 1;
    const HiddenTyping hidden(streams.input);
    if (isTerminal) streams.err << prompt << std::flush;
    std::string line;
    bool complete = false;
    char byte = 0;
    while (!complete && line.size() < kLongest && waitForInput(streams.input, interrupts)) {
        const ssize_t count = read(streams.input, &byte, 1);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        complete = byte == '\n';
        if (!complete) line += byte;
    }
    if (isTerminal) streams.err << '\n';
    if (interrupts.raised() || (line.empty() && !complete)) return std::nullopt;
    return line;
}

}  // namespace tessary
