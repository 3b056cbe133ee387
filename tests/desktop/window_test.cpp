#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QKeySequence>
#include <QtQuick/QQuickItem>
#include <QtTest/QTest>
#include <map>

#include "desktop/desk_rig.h"
#include "desktop/search/command_palette.h"
#include "desktop/shell/navigator.h"
#include "desktop/today/today_model.h"
#include "desktop/window.h"
#include "library/library_exchange.h"

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
    /// What is laid out and drawn may complain, too.
    void look() {
        QCoreApplication::processEvents();
        EXPECT_FALSE(window().grabWindow().isNull());
    }

    NotebookId notebook_ = makeWelcomeNotebook(*workspace)->notebook;
    std::vector<std::string> problems_;
    QQmlApplicationEngine engine_;
};

TEST_F(WindowTest, EveryScreenComesUpWithoutAComplaint) {
    ASSERT_FALSE(engine_.rootObjects().isEmpty());
    const QString notebook = toQml(notebook_);
    const QString page = toQml(library().entries()[0].id);
    const std::vector<std::function<void(Navigator&)>> ways{
        [](Navigator& navigator) { navigator.openToday(); },
        [](Navigator& navigator) { navigator.openStudy(); },
        [&](Navigator& navigator) { navigator.openDeck(notebook); },
        [](Navigator& navigator) { navigator.openDeck("all"); },
        [&](Navigator& navigator) { navigator.openReviewOf(notebook); },
        [&](Navigator& navigator) { navigator.openPlace(notebook); },
        [&](Navigator& navigator) { navigator.openPage(notebook, page); },
        [](Navigator& navigator) { navigator.openPlace("favorites"); },
        [](Navigator& navigator) { navigator.openPlace("archive"); },
        [](Navigator& navigator) { navigator.openTrash(); },
        [](Navigator& navigator) { navigator.openSettings(); },
        [](Navigator& navigator) { navigator.openSettings("flashcards"); },
        [](Navigator& navigator) { navigator.openSettings("general"); },
        [](Navigator& navigator) { navigator.openSettings("backup"); },
        [](Navigator& navigator) { navigator.openSettings("library"); },
        [](Navigator& navigator) { navigator.openSettings("about"); },
        [&](Navigator& navigator) { navigator.openReview(page); },
        [](Navigator& navigator) { navigator.openReview(""); },
        [](Navigator& navigator) { navigator.goBack(); },
        [](Navigator& navigator) { navigator.openShelf(); },
    };
    for (const auto& [theme, size] : {std::pair("light", QSize(1280, 800)), std::pair("dark", QSize(900, 600))}) {
        desk.setTheme(theme);
        window().resize(size);
        for (const auto& go : ways) {
            go(navigator());
            look();
        }
        for (const char* const name : {"search", "palette", "generation"}) {
            auto* const sheet = window().findChild<QObject*>(name);
            ASSERT_NE(sheet, nullptr) << name;
            QMetaObject::invokeMethod(sheet, "open");
            look();
            EXPECT_TRUE(sheet->property("visible").toBool()) << name;
            QMetaObject::invokeMethod(sheet, "close");
        }
    }
    EXPECT_EQ(problems_, std::vector<std::string>{});
}

TEST_F(WindowTest, TodayLeadsOn) {
    const QString notebook = toQml(notebook_);
    const QString page = toQml(library().entries()[0].id);
    struct Case {
        const char* asked;
        QStringList of;
        QStringList leadsTo;  ///< screen, place, deck, page
    };
    const auto ask = [this](const Case& one) {
        navigator().openToday();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the screen of the time before
        std::vector<QGenericArgument> of(2);
        for (qsizetype i = 0; i < one.of.size(); ++i) of[static_cast<std::size_t>(i)] = Q_ARG(QString, one.of[i]);
        QObject* const today = window().findChild<TodayModel*>()->parent();
        EXPECT_TRUE(QMetaObject::invokeMethod(today, one.asked, of[0], of[1])) << one.asked;
        return QStringList{navigator().screen(), navigator().place(), navigator().deck(), navigator().page()};
    };
    for (const Case& one : {
             Case{"review", {""}, {"review", "", "", ""}},
             Case{"review", {notebook}, {"review", "", notebook, ""}},
             Case{"openPage", {notebook, page}, {"pages", notebook, "", page}},
             Case{"openShelf", {}, {"shelf", "", "", ""}},
         })
        EXPECT_EQ(ask(one).join('|').toStdString(), one.leadsTo.join('|').toStdString()) << one.asked;
    ask({"makeWelcome", {}, {}});
    EXPECT_EQ(library().notebooks().size(), 2U);
    EXPECT_EQ(problems_, std::vector<std::string>{});
}

TEST_F(WindowTest, EveryKeyStandsOnce) {
    auto& commands = *window().findChild<CommandPalette*>();
    auto list = commands.commandsForQml();
    for (const char* const screen : {"shelf", "pages", "study"}) {
        if (screen == std::string("pages")) navigator().openPlace("all");
        if (screen == std::string("study")) navigator().openStudy();
        std::map<QString, QString> titles;
        for (qsizetype i = 0; i < list.count(&list); ++i) {
            const Command& command = *list.at(&list, i);
            EXPECT_FALSE(command.title().isEmpty());
            for (const QString& key : command.property("keys").toStringList()) {
                EXPECT_FALSE(QKeySequence(key).toString().isEmpty()) << key.toStdString();
                const auto [found, isNew] = titles.try_emplace(key, command.title());
                EXPECT_TRUE(isNew) << key.toStdString() << ": " << found->second.toStdString();
            }
        }
        EXPECT_GT(titles.size(), 10U);
    }
}

TEST_F(WindowTest, CommandsDoWhatTheirNamesSayWhereTheyCan) {
    auto& commands = *window().findChild<CommandPalette*>();
    auto list = commands.commandsForQml();
    const auto command = [&](const QString& title) -> Command& {
        for (qsizetype i = 0; i < list.count(&list); ++i) {
            if (list.at(&list, i)->title() == title) return *list.at(&list, i);
        }
        throw std::invalid_argument("no command " + title.toStdString());
    };
    const auto shown = [&](const QString& title) {
        return QTest::qWaitFor([&] {
            return std::ranges::any_of(window().findChildren<QObject*>(), [&](const QObject* each) {
                return each->property("visible").toBool() && each->property("title").toString() == title;
            });
        });
    };
    Command& generate = command("Generate cards for this page…");
    navigator().openShelf();
    EXPECT_FALSE(generate.isOffered());
    navigator().openPlace(toQml(notebook_));
    EXPECT_TRUE(generate.isOffered());
    generate.trigger();
    EXPECT_TRUE(shown("Generate cards"));

    command("Open the deck").trigger();
    EXPECT_EQ(navigator().deck(), toQml(notebook_));
    navigator().openPlace("favorites");
    command("Open the deck").trigger();
    EXPECT_EQ(navigator().deck(), "all");
    EXPECT_FALSE(command("Open the deck").isOffered());

    for (const auto& [name, title] : {std::pair("Export all pages as JSON…", "Export all pages as JSON"),
                                      std::pair("Export all pages as Markdown…", "Export all pages as Markdown"),
                                      std::pair("Export all cards…", "Export all cards"),
                                      std::pair("Import notes…", "Choose a folder of notes to import"),
                                      std::pair("Import backup…", "Choose a Tessary JSON backup to import"),
                                      std::pair("Import cards…", "Choose a deck file to import")}) {
        command(name).trigger();
        EXPECT_TRUE(shown(title)) << name;
    }
    command("Back up now").trigger();
    EXPECT_FALSE(command("Import notes…").isOffered()) << "one thing at a time";
    const auto backup = autoBackupFile(paths.documents, workspace->services());
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(backup); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return command("Import notes…").isOffered(); }));
    EXPECT_EQ(problems_, std::vector<std::string>{});
}

TEST_F(WindowTest, ANotebookLendsItsColourWhileItIsShown) {
    Notebook green;
    green.name = "Botany";
    green.colorHex = "2E7D32";
    const NotebookId botany = library().addNotebook(green);
    const auto becomes = [this](const QColor& wanted) {
        return QTest::qWaitFor([&] { return window().property("accent").value<QColor>() == wanted; });
    };
    const QColor usual = window().property("accent").value<QColor>();
    navigator().openPlace(toQml(botany));
    EXPECT_TRUE(becomes("#2e7d32"));
    navigator().openStudy();
    EXPECT_TRUE(becomes(usual));
    navigator().openReview(toQml(addPage("Moss", botany)));
    EXPECT_TRUE(becomes("#2e7d32"));
    navigator().goBack();
    EXPECT_TRUE(becomes(usual));
}

TEST_F(WindowTest, StaysOpenWhileNotEverythingIsSaved) {
    auto& sheet = *window().findChild<QObject*>("unsaved");
    QCoreApplication::processEvents();
    // A folder where the file belongs: what is written can't replace it.
    const auto file = paths.library.entries();
    std::filesystem::remove(file);
    std::filesystem::create_directories(file / "in the way");
    addPage("Not saved yet");
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(sheet.property("visible").toBool());
    EXPECT_TRUE(sheet.property("problem").toString().contains("entries.json"));
    EXPECT_FALSE(window().close()) << "it is still so";

    std::filesystem::remove_all(file);
    QMetaObject::invokeMethod(&sheet, "accept");
    EXPECT_FALSE(window().isVisible()) << "tried again";
    EXPECT_TRUE(std::filesystem::is_regular_file(file));
    EXPECT_EQ(problems_, std::vector<std::string>{});
}

TEST_F(WindowTest, IsClosedUnsavedWhenTheUserSaysSo) {
    auto& sheet = *window().findChild<QObject*>("unsaved");
    const auto file = paths.library.entries();
    std::filesystem::remove(file);
    std::filesystem::create_directories(file / "in the way");
    addPage("Not saved yet");
    EXPECT_FALSE(window().close());
    QMetaObject::invokeMethod(&sheet, "closeAnyway");
    EXPECT_FALSE(window().isVisible());
    std::filesystem::remove_all(file);
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

TEST(TroubleWindowTest, SaysWhatIsWrongUntilItIsClosed) {
    QQmlApplicationEngine engine;
    load(engine, "Tessary.Shell", "TroubleWindow",
         {{"headline", "Tessary is already open"},
          {"sentence", "Another program (process 4711) has this library open. Close it there and try again."}});
    ASSERT_FALSE(engine.rootObjects().isEmpty());
    auto& window = *qobject_cast<QQuickWindow*>(engine.rootObjects().front());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    for (const char* const text : {"Tessary is already open", "Close",
                                   "Another program (process 4711) has this library "
                                   "open. Close it there and try again."}) {
        const auto items = window.findChildren<QQuickItem*>();
        const auto item = std::ranges::find_if(items, [&](auto* each) { return each->property("text") == text; });
        ASSERT_NE(item, items.end()) << text;
        EXPECT_LT((*item)->mapToScene(QPointF(0, (*item)->height())).y(), window.height()) << text << " is cut off";
    }
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace tessary
