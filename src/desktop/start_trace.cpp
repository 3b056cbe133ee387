#include "desktop/start_trace.h"

#include <unistd.h>

#include <QtQuick/QQuickWindow>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace tessary {
namespace {

constexpr int kStartField = 22;  // of proc_pid_stat(5), in clock ticks since the machine started
constexpr double kNanoseconds = 1e9;

bool tracing() {
    static const bool asked = std::getenv("TESSARY_TRACE_START") != nullptr;
    return asked;
}

/// In seconds since the machine started.
double processBegan() {
    std::string line;
    std::getline(std::ifstream("/proc/self/stat"), line);
    std::istringstream fields(line.substr(line.rfind(')') + 1));  // behind the name, which may have spaces
    std::string field;
    for (int i = 2; i < kStartField; ++i) fields >> field;
    return std::strtod(field.c_str(), nullptr) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

}  // namespace

void traceStart(std::string_view stage) {
    if (!tracing()) return;
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    const double seconds = static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / kNanoseconds;
    const auto milliseconds = static_cast<long>((seconds - processBegan()) * 1000);
    std::cerr << "start: " << stage << ' ' << milliseconds << " ms" << std::endl;
}

void traceFirstFrame(QObject* window) {
    auto* const shown = qobject_cast<QQuickWindow*>(window);
    if (!tracing() || shown == nullptr) return;
    // From the render thread where there is one; directly, as the main thread may have more to do first.
    QObject::connect(
        shown, &QQuickWindow::frameSwapped, shown, [] { traceStart("first frame"); },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
}

}  // namespace tessary
