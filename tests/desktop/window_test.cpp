#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <filesystem>
#include <iostream>

#include "app/welcome.h"
#include "desktop/desk/desk.h"
#include "desktop/shell/navigator.h"
#include "desktop/window.h"
#include "platform/adapters/qt/qt_main_loop.h"

namespace tessary {
namespace {

std::optional<std::string> noEnvironment(std::string_view) { return std::nullopt; }

/// The whole window on a real library with the welcome notebook in it.
class WindowTest : public testing::Test {
protected:
    WindowTest() {
        chooseLook();
        std::string pattern = (std::filesystem::temp_directory_path() / "tessary-window-XXXXXX").string();
        home_ = mkdtemp(pattern.data());
        const AppPaths paths = portablePaths(home_, PosixFileSystem()).value();
        ports_ = std::make_unique<SystemPorts>(paths, std::nullopt, std::cerr);
        workspace_ = Workspace::open(paths, ports_->forWorkspace(noEnvironment, loop_), WorkspaceUse::change).value();
        notebook_ = makeWelcomeNotebook(*workspace_)->notebook;
        ai_ = std::make_unique<AISystem>(
            AISystem::Shared{.files = ports_->files, .ids = ports_->ids, .text = ports_->text}, noEnvironment);
        desk_ = std::make_unique<Desk>(*workspace_, *ports_, loop_, *ai_);
        engine_ = std::make_unique<QQmlApplicationEngine>();
        QObject::connect(engine_.get(), &QQmlEngine::warnings, [this](const QList<QQmlError>& warnings) {
            for (const QQmlError& warning : warnings) problems_.push_back(warning.toString().toStdString());
        });
        load(*engine_, "Tessary.Shell", "MainWindow", {{"desk", QVariant::fromValue(desk_.get())}});
    }
    ~WindowTest() override {
        engine_.reset();
        desk_.reset();
        workspace_.reset();
        std::filesystem::remove_all(home_);
    }

    QQuickWindow& window() { return *qobject_cast<QQuickWindow*>(engine_->rootObjects().front()); }
    Navigator& navigator() { return *window().findChild<Navigator*>(); }

    std::filesystem::path home_;
    QtMainLoop loop_;
    std::unique_ptr<SystemPorts> ports_;
    std::unique_ptr<Workspace> workspace_;
    std::unique_ptr<AISystem> ai_;
    std::unique_ptr<Desk> desk_;
    std::unique_ptr<QQmlApplicationEngine> engine_;
    NotebookId notebook_;
    std::vector<std::string> problems_;
};

TEST_F(WindowTest, EveryScreenComesUpWithoutAComplaint) {
    ASSERT_FALSE(engine_->rootObjects().isEmpty());
    const std::vector<std::function<void(Navigator&)>> ways{
        [](Navigator& navigator) { navigator.openStudy(); },
        [this](Navigator& navigator) { navigator.openPlace(toQml(notebook_)); },
        [](Navigator& navigator) { navigator.openPlace("favorites"); },
        [](Navigator& navigator) { navigator.openTrash(); },
        [](Navigator& navigator) { navigator.openReview(""); },
        [](Navigator& navigator) { navigator.goBack(); },
        [](Navigator& navigator) { navigator.openShelf(); },
    };
    for (const char* const theme : {"light", "dark"}) {
        desk_->setTheme(theme);
        for (const auto& go : ways) {
            go(navigator());
            QCoreApplication::processEvents();
        }
    }
    EXPECT_EQ(problems_, std::vector<std::string>{});
}

TEST_F(WindowTest, WhatIsDeletedWhileItIsShownIsNotMissed) {
    navigator().openPlace(toQml(notebook_));
    QCoreApplication::processEvents();
    ASSERT_TRUE(workspace_->library().deleteNotebook(notebook_, PagesOfNotebook::goToTrash));
    QCoreApplication::processEvents();
    navigator().openTrash();
    QCoreApplication::processEvents();
    EXPECT_EQ(problems_, std::vector<std::string>{});
    EXPECT_FALSE(workspace_->library().trash().empty());
}

}  // namespace
}  // namespace tessary
