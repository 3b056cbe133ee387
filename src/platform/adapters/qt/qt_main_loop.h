#pragma once

#include <QtCore/QObject>

#include "platform/main_loop.h"

namespace tessary {

/// The main loop on Qt's event loop. Made and destroyed on the main thread, after and before the application object.
/// What has not run when it is destroyed is dropped.
class QtMainLoop final : public QObject, public MainLoop {
public:
    void post(std::move_only_function<void()> task) override;
    DelayedTask postAfter(double seconds, std::move_only_function<void()> task) override;

    bool event(QEvent* event) override;
};

}  // namespace tessary
