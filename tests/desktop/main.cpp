#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>

/// View models post to the event loop, and covers are painted: both need an application object. There is no screen.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
