#include "desktop/desk/desk.h"

#include <QtCore/QMetaObject>

namespace tessary {
namespace {

constexpr const char* kThemeKey = "tessary.theme";

}  // namespace

Desk::Desk(Workspace& workspace, SystemPorts& ports, MainLoop& loop, AISystem& ai)
    : workspace_(workspace), ports_(ports), loop_(loop), ai_(ai) {
    subscriptions_.push_back(
        library().changed.connect([this](const LibraryChange&) { soon(libraryPending_, &Desk::libraryChanged); }));
    subscriptions_.push_back(
        cards().changed.connect([this](const std::vector<CardId>&) { soon(cardsPending_, &Desk::cardsChanged); }));
}

void Desk::soon(bool& pending, void (Desk::*signal)()) {
    if (std::exchange(pending, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this, &pending, signal] {
            pending = false;
            Q_EMIT(this->*signal)();
        },
        Qt::QueuedConnection);
}

QString Desk::theme() const { return toQml(settings().text(kThemeKey).value_or("system")); }

void Desk::setTheme(const QString& theme) {
    if (theme == this->theme()) return;
    if (const auto stored = settings().setText(kThemeKey, theme.toStdString()); !stored) return refuse(stored.error());
    Q_EMIT themeChanged();
}

QString Desk::closeLibrary() {
    const auto closed = workspace_.close();
    return closed ? QString() : toQml(closed.error());
}

QStringList Desk::problems() const {
    QStringList lines;
    for (const std::string& problem : workspace_.loadProblems()) lines.append(toQml(problem));
    return lines;
}

}  // namespace tessary
