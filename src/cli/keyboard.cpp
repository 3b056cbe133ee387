#include "cli/keyboard.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>

namespace tessary {
namespace {

constexpr int kEnd = -1;
constexpr int kNothingYet = -2;
constexpr double kForEver = -1;
/// How long the rest of an arrow key's bytes may take, in seconds.
constexpr double kEscapeWait = 0.05;
constexpr int kEscapeByte = 0x1B;

double steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::size_t continuationBytes(unsigned char first) {
    if (first >= 0xF0) return 3;
    if (first >= 0xE0) return 2;
    return first >= 0xC0 ? 1 : 0;
}

}  // namespace

/// Keys come at once and unseen; Ctrl-C still sends its signal.
class Keyboard::RawMode {
public:
    explicit RawMode(int descriptor) : descriptor_(descriptor) {
        if (tcgetattr(descriptor_, &before_) != 0) return;
        termios raw = before_;
        raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        raw.c_cc[VMIN] = 1;
        raw.c_cc[VTIME] = 0;
        raw.c_cc[VSUSP] = _POSIX_VDISABLE;  // coming back from a stop would find the terminal in another mode
        changed_ = tcsetattr(descriptor_, TCSADRAIN, &raw) == 0;
    }
    ~RawMode() {
        if (changed_) tcsetattr(descriptor_, TCSADRAIN, &before_);
    }
    RawMode(const RawMode&) = delete;
    RawMode& operator=(const RawMode&) = delete;

private:
    int descriptor_;
    termios before_{};
    bool changed_ = false;
};

Keyboard::Keyboard(int descriptor, EventLoop& loop, const Interrupts& interrupts)
    : descriptor_(descriptor), loop_(loop), interrupts_(interrupts) {
    if (isatty(descriptor) == 1) rawMode_ = std::make_unique<RawMode>(descriptor);
}

Keyboard::~Keyboard() = default;

bool Keyboard::isTerminal() const { return rawMode_ != nullptr; }

Key Keyboard::next() {
    constexpr int kControlD = 0x04;
    constexpr int kDelete = 0x7F;
    const int byte = nextByte(kForEver);
    if (byte == kEnd || byte == kControlD) return {Key::Kind::end, {}};
    if (byte == '\n' || byte == '\r') return {Key::Kind::enter, {}};
    if (byte == kEscapeByte) return afterEscape();
    if (byte == kDelete || byte == '\b') return {Key::Kind::backspace, {}};
    if (byte < ' ') return {Key::Kind::other, {}};
    return character(static_cast<unsigned char>(byte));
}

Key Keyboard::afterEscape() {
    const int introducer = nextByte(kEscapeWait);
    if (introducer == kNothingYet || introducer == kEnd) return {Key::Kind::escape, {}};
    if (introducer != '[' && introducer != 'O') {
        --position_;  // a key of its own
        return {Key::Kind::escape, {}};
    }
    for (int byte = nextByte(kEscapeWait); byte >= 0 && (byte < '@' || byte > '~');) byte = nextByte(kEscapeWait);
    return {Key::Kind::other, {}};
}

Key Keyboard::character(unsigned char first) {
    Key key{Key::Kind::character, std::string(1, static_cast<char>(first))};
    for (std::size_t missing = continuationBytes(first); missing > 0; --missing) {
        const int byte = nextByte(kForEver);
        if (byte < 0) break;
        key.text += static_cast<char>(byte);
    }
    return key;
}

int Keyboard::nextByte(double seconds) {
    if (position_ == buffer_.size() && !ended_) {
        if (!waitForInput(seconds)) return ended_ ? kEnd : kNothingYet;
        std::array<char, 256> chunk;
        const ssize_t count = read(descriptor_, chunk.data(), chunk.size());
        ended_ = count <= 0 && !(count < 0 && (errno == EINTR || errno == EAGAIN));
        buffer_.assign(chunk.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        position_ = 0;
        if (!ended_ && buffer_.empty()) return nextByte(seconds);
    }
    if (interrupts_.raised() || position_ == buffer_.size()) {
        ended_ = true;
        return kEnd;
    }
    return static_cast<unsigned char>(buffer_[position_++]);
}

bool Keyboard::waitForInput(double seconds) {
    constexpr double kMilliseconds = 1000;
    constexpr double kLongestWait = 3600;
    const double deadline = seconds < 0 ? kLongestWait * kLongestWait : steadySeconds() + seconds;
    while (true) {
        loop_.runReady();
        if (interrupts_.raised()) {
            ended_ = true;
            return false;
        }
        const double left = seconds < 0 ? kLongestWait : deadline - steadySeconds();
        if (left <= 0) return false;
        const double wait = std::min({left, loop_.secondsToNextTask().value_or(kLongestWait), kLongestWait});
        std::array<pollfd, 2> waited{{{descriptor_, POLLIN, 0}, {interrupts_.descriptor(), POLLIN, 0}}};
        const int ready = poll(waited.data(), waited.size(), static_cast<int>(wait * kMilliseconds) + 1);
        if (ready > 0 && waited[0].revents != 0) return true;
    }
}

}  // namespace tessary
