#include <QtCore/QCommandLineParser>
#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <algorithm>
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

/// Says on the screen, too, why there is no library to show; until the user closes that.
int showTrouble(const QString& headline, const std::string& sentence, const std::string& theme = "system") {
    QQmlApplicationEngine engine;
    load(engine, "Tessary.Shell", "TroubleWindow",
         {{"headline", headline},
          {"sentence", QString::fromStdString(sentence)},
          {"theme", QString::fromStdString(theme)}});
    const int code = fail(sentence);
    if (!engine.rootObjects().isEmpty()) QGuiApplication::exec();
    return code;
}

int showUnopened(const AppPaths& paths, SystemPorts& ports, const std::string& sentence) {
    const auto lock = ports.files.lock(paths.library.base);
    const bool isOpenElsewhere = !lock && lock.error().heldByOther;
    return showTrouble(isOpenElsewhere ? "Tessary is already open" : "Your library can’t be opened", sentence,
                       ports.settings.text("tessary.theme").value_or("system"));
}

/// The window on one library, until it is closed. What is pending is saved before it returns.
int showLibrary(const AppPaths& paths, const QString& startAt) {
    SystemPorts ports(paths, std::nullopt, std::cerr);
    QtMainLoop loop;
    auto workspace = Workspace::open(paths, ports.forWorkspace(environmentValue, loop), WorkspaceUse::change);
    if (!workspace) return showUnopened(paths, ports, workspace.error());
    traceStart("library open");
    AISystem ai({.files = ports.files, .ids = ports.ids, .text = ports.text}, environmentValue);
    int code = 0;
    bool closed = false;
    {
        Desk desk(**workspace, ports, loop, ai);
        QQmlApplicationEngine engine;
        load(engine, "Tessary.Shell", "MainWindow", {{"desk", QVariant::fromValue(&desk)}, {"startAt", startAt}});
        if (engine.rootObjects().isEmpty()) return fail("The window could not be made.");
        traceStart("window made");
        traceFirstFrame(engine.rootObjects().front());
        code = QGuiApplication::exec();
        closed = desk.closed();
    }
    // The window has closed the library, unless a signal ended the program; what the user chose to leave unsaved is
    // tried once more.
    const auto saved = closed ? (*workspace)->flush() : (*workspace)->close();
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

/// Without a display Qt would abort.
bool hasDisplay(int argc, char** argv) {
    for (const char* const name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        if (!environmentValue(name).value_or("").empty()) return true;
    }
    const auto namesOne = [](std::string_view argument) {
        return argument.ends_with("-platform") || argument.ends_with("-display");
    };
    return std::any_of(argv + 1, argv + argc, namesOne);
}

class CommandLine {
public:
    CommandLine() {
        parser_.setApplicationDescription("A study notebook: pages, cards, and reviews just before you would forget.");
        parser_.addHelpOption();
        parser_.addVersionOption();
        parser_.addOptions({home_, gallery_, review_});
    }
    /// Ends the program when help or the version is asked for, or what is not known.
    void read(const QCoreApplication& app) { parser_.process(app); }

    [[nodiscard]] QString home() const { return parser_.value(home_); }
    [[nodiscard]] bool wantsGallery() const { return parser_.isSet(gallery_); }
    [[nodiscard]] QString startAt() const { return parser_.isSet(review_) ? "review" : ""; }

private:
    QCommandLineParser parser_;
    QCommandLineOption home_{"home", "Keep everything below this folder instead of the usual places.", "DIR"};
    QCommandLineOption gallery_{"gallery", "Show every control of the program."};
    QCommandLineOption review_{"review", "Begin with the reviews of today."};
};

}  // namespace
}  // namespace tessary

int main(int argc, char** argv) {
    QGuiApplication::setApplicationName("tessary");
    QGuiApplication::setApplicationDisplayName("Tessary");
    QGuiApplication::setApplicationVersion(TESSARY_VERSION);
    QGuiApplication::setDesktopFileName("com.tessary.Tessary");
    tessary::chooseLook();
    tessary::CommandLine line;
    if (!tessary::hasDisplay(argc, argv)) {
        line.read(QCoreApplication(argc, argv));
        return tessary::fail("There is no display for the window here. In a terminal, use “tessary-cli review”.");
    }
    const QGuiApplication app(argc, argv);
    tessary::traceStart("application made");
    line.read(app);
    QGuiApplication::setWindowIcon(tessary::windowIcon());
    const tessary::EndingSignals signalsEndTheLoop;
    if (line.wantsGallery()) return tessary::showGallery();
    const auto paths = tessary::findPaths(line.home());
    if (!paths) return tessary::showTrouble("Your library can’t be found", paths.error());
    return tessary::showLibrary(*paths, line.startAt());
}
