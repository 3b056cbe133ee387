#include "platform/adapters/qt/qt_main_loop.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <cmath>
#include <memory>
#include <utility>

namespace tessary {
namespace {

constexpr double kMillisecondsPerSecond = 1000;

QEvent::Type taskEventType() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

class TaskEvent final : public QEvent {
public:
    explicit TaskEvent(std::move_only_function<void()> task) : QEvent(taskEventType()), task_(std::move(task)) {}
    void run() { task_(); }

private:
    std::move_only_function<void()> task_;
};

}  // namespace

void QtMainLoop::post(std::move_only_function<void()> task) {
    QCoreApplication::postEvent(this, new TaskEvent(std::move(task)));  // the event queue owns it
}

bool QtMainLoop::event(QEvent* event) {
    if (event->type() != taskEventType()) return QObject::event(event);
    static_cast<TaskEvent*>(event)->run();
    return true;
}

DelayedTask QtMainLoop::postAfter(double seconds, std::move_only_function<void()> task) {
    auto* const timer = new QTimer(this);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    const auto shared = std::make_shared<std::move_only_function<void()>>(std::move(task));
    connect(timer, &QTimer::timeout, timer, [timer, shared] {
        timer->deleteLater();
        (*shared)();
    });
    timer->start(static_cast<int>(std::ceil(seconds * kMillisecondsPerSecond)));
    return DelayedTask([guard = QPointer<QTimer>(timer)] {
        if (!guard) return;
        guard->stop();
        guard->deleteLater();  // it may be the one that runs right now
    });
}

}  // namespace tessary
