#pragma once

#include <QtCore/QSocketNotifier>
#include <memory>

namespace tessary {

/// While one lives, Ctrl-C and the signals that end a program end the application's event loop with 0, so that what is
/// pending is saved as when the window is closed; nothing is asked. A signal that comes before the loop runs ends it
/// at its start. One at a time, main thread only, after the application object.
class EndingSignals {
public:
    EndingSignals();
    ~EndingSignals();
    EndingSignals(const EndingSignals&) = delete;
    EndingSignals& operator=(const EndingSignals&) = delete;

private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tessary
