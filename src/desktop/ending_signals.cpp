#include "desktop/ending_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <array>
#include <cerrno>
#include <system_error>

namespace tessary {
namespace {

constexpr std::array kEnding{SIGINT, SIGTERM, SIGHUP};

std::array<int, 2> wakePipe{-1, -1};
std::array<struct sigaction, kEnding.size()> handlersBefore;

extern "C" void wakeEventLoop(int) {
    const int savedError = errno;
    [[maybe_unused]] const ssize_t written = write(wakePipe[1], "!", 1);
    errno = savedError;
}

}  // namespace

EndingSignals::EndingSignals() {
    if (pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    notifier_ = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [notifier = notifier_.get()] {
        notifier->setEnabled(false);  // the pipe is never read empty
        QCoreApplication::exit(0);
    });
    struct sigaction action{};
    action.sa_handler = wakeEventLoop;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kEnding.size(); ++i) sigaction(kEnding[i], &action, &handlersBefore[i]);
}

EndingSignals::~EndingSignals() {
    for (std::size_t i = 0; i < kEnding.size(); ++i) sigaction(kEnding[i], &handlersBefore[i], nullptr);
    notifier_.reset();
    for (int& end : wakePipe) {
        close(end);
        end = -1;
    }
}

}  // namespace tessary
