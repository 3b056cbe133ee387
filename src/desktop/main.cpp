#include <QtCore/QCommandLineParser>
#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <cstdlib>
#include <iostream>

#include "desktop/desk/desk.h"
#include "desktop/ending_signals.h"
#include "desktop/start_trace.h"
#include "desktop/window.h"
#include "platform/adapters/qt/qt_main_loop.h"

namespace tessary {
namespace {

std::optional<std::string> environmentValue(std::string_view name) {
    const char* const value = std::getenv(std::string(name).c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::expected<AppPaths, std::string> findPaths(const QString& home) {
    const PosixFileSystem files;
    const std::string chosen = home.isEmpty() ? environmentValue("TESSARY_HOME").value_or("") : home.toStdString();
    return chosen.empty() ? desktopPaths(environmentValue, files) : portablePaths(chosen, files);
}

int fail(const std::string& sentence) {
    std::cerr << sentence << '\n';
    return 1;
}

/// The window on one library, until it is closed. What is pending is saved before it returns.
int showLibrary(const AppPaths& paths, const QString& startAt) {
    SystemPorts ports(paths, std::nullopt, std::cerr);
    QtMainLoop loop;
    auto workspace = Workspace::open(paths, ports.forWorkspace(environmentValue, loop), WorkspaceUse::change);
    if (!workspace) return fail(workspace.error());
    traceStart("library open");
    AISystem ai({.files = ports.files, .ids = ports.ids, .text = ports.text}, environmentValue);
    int code = 0;
    {
        Desk desk(**workspace, ports, loop, ai);
        QQmlApplicationEngine engine;
        load(engine, "Tessary.Shell", "MainWindow", {{"desk", QVariant::fromValue(&desk)}, {"startAt", startAt}});
        if (engine.rootObjects().isEmpty()) return fail("The window could not be made.");
        traceStart("window made");
        traceFirstFrame(engine.rootObjects().front());
        code = QGuiApplication::exec();
    }
    // The window has closed the library; what the user chose to leave unsaved is tried once more.
    const auto saved = (*workspace)->flush();
    return saved ? code : fail(saved.error());
}

int showGallery() {
    QQmlApplicationEngine engine;
    load(engine, "Tessary.Kit", "Gallery", {});
    return engine.rootObjects().isEmpty() ? fail("The gallery could not be shown.") : QGuiApplication::exec();
}

QIcon windowIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) icon.addFile(QString(":/icon/%1.png").arg(size));
    return icon;
}

}  // namespace
}  // namespace tessary

int main(int argc, char** argv) {
    QGuiApplication::setApplicationName("tessary");
    QGuiApplication::setApplicationDisplayName("Tessary");
    QGuiApplication::setApplicationVersion(TESSARY_VERSION);
    QGuiApplication::setDesktopFileName("com.tessary.Tessary");
    tessary::chooseLook();
    const QGuiApplication app(argc, argv);
    tessary::traceStart("application made");
    QCommandLineParser parser;
    parser.setApplicationDescription("A study notebook: pages, cards, and reviews just before you would forget.");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption home("home", "Keep everything below this folder instead of the usual places.", "DIR");
    const QCommandLineOption gallery("gallery", "Show every control of the program.");
    const QCommandLineOption review("review", "Begin with the reviews of today.");
    parser.addOptions({home, gallery, review});
    parser.process(app);
    QGuiApplication::setWindowIcon(tessary::windowIcon());
    const tessary::EndingSignals signalsEndTheLoop;
    if (parser.isSet(gallery)) return tessary::showGallery();
    const auto paths = tessary::findPaths(parser.value(home));
    if (!paths) return tessary::fail(paths.error());
    return tessary::showLibrary(*paths, parser.isSet(review) ? "review" : "");
}
