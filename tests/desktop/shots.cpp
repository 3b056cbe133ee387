#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <filesystem>
#include <iostream>

#include "app/welcome.h"
#include "desktop/desk/desk.h"
#include "desktop/shell/navigator.h"
#include "desktop/study_year.h"
#include "desktop/window.h"
#include "platform/adapters/qt/qt_main_loop.h"
#include "support/memory_secret_store.h"

namespace tessary {
namespace {

/// Lets the window settle: animations, layouts, covers that are painted in the background.
void settle() {
    QEventLoop loop;
    QTimer::singleShot(900, &loop, &QEventLoop::quit);
    loop.exec();
}

void shoot(QQuickWindow& window, const std::filesystem::path& folder, const std::string& name) {
    settle();
    const std::string file = (folder / (name + ".png")).string();
    std::cout << file << (window.grabWindow().save(QString::fromStdString(file)) ? "" : " FAILED") << '\n';
}

/// A sheet over the window, with `text` typed into it.
void shootFinder(QQuickWindow& window, const std::filesystem::path& folder, const char* finder, const QString& text,
                 const std::string& name) {
    auto* const sheet = window.findChild<QObject*>(finder);
    QMetaObject::invokeMethod(sheet, "show");
    sheet->setProperty("text", text);
    shoot(window, folder, name);
    QMetaObject::invokeMethod(sheet, "close");
}

}  // namespace
}  // namespace tessary

/// Writes a picture of every screen, in light and dark: shots HOME FOLDER [WIDTH HEIGHT].
int main(int argc, char** argv) {
    using namespace tessary;
    chooseLook();
    const QGuiApplication app(argc, argv);
    const std::filesystem::path home = argv[1];
    const std::filesystem::path folder = argv[2];
    std::filesystem::create_directories(home);
    std::filesystem::create_directories(folder);
    const auto none = [](std::string_view) { return std::optional<std::string>(); };
    const PosixFileSystem files;
    const AppPaths paths = portablePaths(home, files).value();
    SystemPorts ports(paths, std::nullopt, std::cerr);
    QtMainLoop loop;
    auto workspace = Workspace::open(paths, ports.forWorkspace(none, loop), WorkspaceUse::change).value();
    const NotebookId notebook = workspace->library().notebooks().empty() ? makeWelcomeNotebook(*workspace)->notebook
                                                                         : workspace->library().notebooks()[0].id;
    if (workspace->cards().cards().size() < 100) StudyYear(*workspace, ports.clock.now()).live();
    if (!workspace->flush()) return 1;
    MemorySecretStore secrets;
    AISystem ai({.files = ports.files, .ids = ports.ids, .text = ports.text, .secrets = &secrets}, none);
    Desk desk(*workspace, ports, loop, ai);
    QQmlApplicationEngine engine;
    load(engine, "Tessary.Shell", "MainWindow", {{"desk", QVariant::fromValue(&desk)}});
    if (engine.rootObjects().isEmpty()) return 1;
    auto& window = *qobject_cast<QQuickWindow*>(engine.rootObjects().front());
    if (argc > 4) window.resize(std::atoi(argv[3]), std::atoi(argv[4]));
    auto& navigator = *window.findChild<Navigator*>();
    if (!desk.changeSetting(**findSetting("flashcards.provider"), "gemini")) return 1;
    for (const char* const theme : {"light", "dark"}) {
        desk.setTheme(theme);
        const std::string end = std::string("-") + theme;
        navigator.openToday();
        shoot(window, folder, "today" + end);
        navigator.openShelf();
        shoot(window, folder, "shelf" + end);
        navigator.openPlace(toQml(notebook));
        shoot(window, folder, "pages" + end);
        shootFinder(window, folder, "search", "answer tessary", "search" + end);
        shootFinder(window, folder, "palette", "", "palette" + end);
        shootFinder(window, folder, "palette", "no", "palette-typed" + end);
        navigator.openStudy();
        shoot(window, folder, "study" + end);
        navigator.openDeck("all");
        shoot(window, folder, "deck" + end);
        navigator.openTrash();
        shoot(window, folder, "trash" + end);
        for (const char* const pane : {"ai", "flashcards", "general", "backup", "library", "about"}) {
            navigator.openSettings(pane);
            shoot(window, folder, std::string("settings-") + pane + end);
        }
        navigator.openReview("");
        shoot(window, folder, "review" + end);
        navigator.goBack();
    }
    return workspace->close() ? 0 : 1;
}
