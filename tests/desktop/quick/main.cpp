#include <QtQuickTest/quicktest.h>
#include <QtQml/QQmlEngine>

#include "desktop/quick/library_rig.h"
#include "desktop/window.h"

namespace {

class Setup final : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() {
        tessary::chooseLook();
        qmlRegisterType<tessary::LibraryRig>("Tessary.Tests", 1, 0, "LibraryRig");
    }
    void qmlEngineAvailable(QQmlEngine* engine) { engine->addImportPath("qrc:/qt/qml"); }
};

}  // namespace

/// Runs every tst_*.qml of this folder. There is no screen.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Setup setup;
    return quick_test_main_with_setup(argc, argv, "screens", TESSARY_QUICK_TESTS, &setup);
}

#include "main.moc"
