#include "cli/interrupts.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <system_error>

namespace tessary {
namespace {

constexpr std::array kEnding{SIGINT, SIGTERM, SIGHUP};

std::atomic<bool> signalArrived = false;
std::array<int, 2> wakePipe{-1, -1};
std::array<struct sigaction, kEnding.size()> handlersBefore;

static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may touch nothing else");

extern "C" void noteSignal(int) {
    const int savedError = errno;
    signalArrived = true;
    [[maybe_unused]] const ssize_t written = write(wakePipe[1], "!", 1);
    errno = savedError;
}

}  // namespace

Interrupts::Interrupts() {
    if (pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    signalArrived = false;
    struct sigaction action{};
    action.sa_handler = noteSignal;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kEnding.size(); ++i) sigaction(kEnding[i], &action, &handlersBefore[i]);
}

Interrupts::~Interrupts() {
    for (std::size_t i = 0; i < kEnding.size(); ++i) sigaction(kEnding[i], &handlersBefore[i], nullptr);
    for (int& end : wakePipe) {
        close(end);
        end = -1;
    }
}

bool Interrupts::raised() const { return signalArrived; }

int Interrupts::descriptor() const { return wakePipe[0]; }

}  // namespace tessary
