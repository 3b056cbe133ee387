#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <algorithm>
#include <ctime>
#include <fstream>
#include <iostream>

#include "desktop/desk/desk.h"
#include "desktop/shell/navigator.h"
#include "desktop/window.h"
#include "made_up_library.h"
#include "platform/adapters/qt/qt_main_loop.h"

namespace tessary {
namespace {

constexpr std::size_t kPages = 10'000;
constexpr std::size_t kCards = 100'000;
constexpr int kKeys = 120;
constexpr qint64 kBetweenKeys = 60;  // milliseconds
constexpr double kNanosecondsPerMillisecond = 1e6;

/// What the main thread has worked so far, in milliseconds: others on the machine don't count.
double worked() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_nsec) / kNanosecondsPerMillisecond;
}

/// One turn of the event loop after another, each timed, until the time is over.
void turnFor(qint64 milliseconds, std::vector<double>& turns) {
    QElapsedTimer whole;
    whole.start();
    while (whole.elapsed() < milliseconds) {
        const double before = worked();
        QCoreApplication::processEvents();
        turns.push_back(worked() - before);
    }
}

/// Also deletes the screen before, which without a running event loop would live on and work along.
void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void tell(const char* what, std::vector<double> times) {
    std::ranges::sort(times);
    const auto at = [&](double share) { return times[static_cast<std::size_t>(share * double(times.size() - 1))]; };
    std::cout << what << ": median " << at(0.5) << ", 95 % " << at(0.95) << ", longest " << times.back() << " ms\n";
}

/// Types into the open page as a person would, and tells how long the main thread was busy.
void typeInto(QQuickWindow& window, const char* where) {
    std::vector<double> keys;
    std::vector<double> turns;
    turnFor(2000, turns);
    turns.clear();
    for (int i = 0; i < kKeys; ++i) {
        const double before = worked();
        QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a");
        QCoreApplication::sendEvent(&window, &press);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, "a");
        QCoreApplication::sendEvent(&window, &release);
        keys.push_back(worked() - before);
        turnFor(kBetweenKeys, turns);
    }
    std::cout << where << '\n';
    tell("  a key", keys);
    std::erase_if(turns, [](double turn) { return turn < 0.05; });  // nothing to do
    tell("  a turn of the loop with work", turns);
}

}  // namespace
}  // namespace tessary

/// Typing at 10,000 pages and 100,000 cards, in the whole window.
int main(int argc, char** argv) {
    using namespace tessary;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    chooseLook();
    const QGuiApplication app(argc, argv);
    const auto none = [](std::string_view) { return std::optional<std::string>(); };
    const BenchFolder folder;
    const AppPaths paths = portablePaths(folder.path(), PosixFileSystem()).value();
    SystemPorts ports(paths, kBenchNow, std::cerr);
    QtMainLoop loop;
    {
        const auto made = Workspace::open(paths, ports.forWorkspace(none, loop), WorkspaceUse::change).value();
        const std::filesystem::path base = made->library().folders().base;
        std::ofstream(base / "entries.json") << pagesText(kPages);
        std::ofstream(base / "flashcards.json") << cardsText(kCards);
    }
    auto workspace = Workspace::open(paths, ports.forWorkspace(none, loop), WorkspaceUse::change).value();
    std::cout << workspace->library().entries().size() << " pages, " << workspace->cards().cards().size() << " cards\n";
    AISystem ai({.files = ports.files, .ids = ports.ids, .text = ports.text}, none);
    Desk desk(*workspace, ports, loop, ai);
    QQmlApplicationEngine engine;
    load(engine, "Tessary.Shell", "MainWindow", {{"desk", QVariant::fromValue(&desk)}});
    if (engine.rootObjects().isEmpty()) return 1;
    auto& window = *qobject_cast<QQuickWindow*>(engine.rootObjects().front());
    auto& navigator = *window.findChild<Navigator*>();
    for (const char* const order : {"created", "edited", "title"}) {
        if (!ports.settings.setText("entrySortMode", order)) return 1;
        desk.listingChanged();
        navigator.openShelf();
        settle();
        navigator.openPlace("all");
        settle();
        typeInto(window, order);
    }
    return workspace->close() ? 0 : 1;
}
