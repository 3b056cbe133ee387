#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

#include "desktop/desk_rig.h"
#include "desktop/shell/navigator.h"
#include "desktop/window.h"

namespace tessary {
namespace {

/// The whole window on a library with the welcome notebook in it.
class WindowTest : public testing::Test, public DeskRig<> {
protected:
    WindowTest() {
        chooseLook();
        QObject::connect(&engine_, &QQmlEngine::warnings, [this](const QList<QQmlError>& warnings) {
            for (const QQmlError& warning : warnings) problems_.push_back(warning.toString().toStdString());
        });
        load(engine_, "Tessary.Shell", "MainWindow", {{"desk", QVariant::fromValue(&desk)}});
    }

    QQuickWindow& window() { return *qobject_cast<QQuickWindow*>(engine_.rootObjects().front()); }
    Navigator& navigator() { return *window().findChild<Navigator*>(); }

    NotebookId notebook_ = makeWelcomeNotebook(*workspace)->notebook;
    std::vector<std::string> problems_;
    QQmlApplicationEngine engine_;
};

TEST_F(WindowTest, EveryScreenComesUpWithoutAComplaint) {
    ASSERT_FALSE(engine_.rootObjects().isEmpty());
    const std::vector<std::function<void(Navigator&)>> ways{
        [](Navigator& navigator) { navigator.openStudy(); },
        [this](Navigator& navigator) { navigator.openDeck(toQml(notebook_)); },
        [](Navigator& navigator) { navigator.openDeck("all"); },
        [this](Navigator& navigator) { navigator.openReviewOf(toQml(notebook_)); },
        [this](Navigator& navigator) { navigator.openPlace(toQml(notebook_)); },
        [](Navigator& navigator) { navigator.openPlace("favorites"); },
        [](Navigator& navigator) { navigator.openTrash(); },
        [](Navigator& navigator) { navigator.openReview(""); },
        [](Navigator& navigator) { navigator.goBack(); },
        [](Navigator& navigator) { navigator.openShelf(); },
    };
    for (const char* const theme : {"light", "dark"}) {
        desk.setTheme(theme);
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
    ASSERT_TRUE(library().deleteNotebook(notebook_, PagesOfNotebook::goToTrash));
    QCoreApplication::processEvents();
    navigator().openTrash();
    QCoreApplication::processEvents();
    EXPECT_EQ(problems_, std::vector<std::string>{});
    EXPECT_FALSE(library().trash().empty());
}

}  // namespace
}  // namespace tessary
