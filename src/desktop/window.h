#pragma once

#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlExtensionPlugin>
#include <QtQuick/QQuickWindow>
#include <QtQuickControls2/QQuickStyle>

// A static module is only there when the program asks for it; so this is for one source file of each program.
Q_IMPORT_QML_PLUGIN(Tessary_CompanionPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_KitPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_DeskPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_ShelfPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_TodayPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_PagesPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_ReviewPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_StudyPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_GenerationPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_SearchPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_SettingsPlugin)
Q_IMPORT_QML_PLUGIN(Tessary_ShellPlugin)

namespace tessary {

/// Before the first window is made.
inline void chooseLook() {
    QQuickStyle::setStyle("Basic");
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
}

/// Makes one type of one module; no root object stands for failure. Loaded by its file's address it would not see its
/// module's own C++ types.
inline void load(QQmlApplicationEngine& engine, const char* module, const char* type, const QVariantMap& properties) {
    engine.addImportPath("qrc:/qt/qml");
    engine.setInitialProperties(properties);
    engine.loadData(QString("import %1\n%2 {}").arg(module, type).toUtf8());
}

}  // namespace tessary
