#include "desktop/desk/desk.h"

#include <QtCore/QMetaObject>
#include <cmath>

#include "desktop/desk/due_counts.h"

namespace tessary {
namespace {

constexpr const char* kThemeKey = "tessary.theme";
constexpr const char* kCompanionKey = "tessary.companion";
constexpr double kDueLife = 30;  // seconds; cards fall due while nothing changes

}  // namespace

Desk::Desk(Workspace& workspace, SystemPorts& ports, MainLoop& loop, AISystem& ai)
    : workspace_(workspace), ports_(ports), loop_(loop), ai_(ai) {
    subscriptions_.push_back(library().changed.connect([this](const LibraryChange&) { hearLibrary(); }));
    subscriptions_.push_back(cards().changed.connect([this](const std::vector<CardId>&) {
        due_.reset();
        soon(cardsPending_, &Desk::cardsChanged);
    }));
}

void Desk::type(FunctionRef<void()> change) {
    typing_ = true;
    change();
    typing_ = false;
}

void Desk::hearLibrary() {
    if (typing_ && typingPause_) {
        typingWaits_ = true;
        return;
    }
    typingWaits_ = false;
    soon(libraryPending_, &Desk::libraryChanged);
    if (typing_) typingPause_ = loop_.postAfter(kTypingPause, [this] { typingPaused(); });
}

void Desk::typingPaused() {
    typingPause_.reset();
    if (!std::exchange(typingWaits_, false)) return;
    soon(libraryPending_, &Desk::libraryChanged);
    typingPause_ = loop_.postAfter(kTypingPause, [this] { typingPaused(); });
}

const std::unordered_map<PageId, int>& Desk::due() {
    const Date present = now();
    if (!due_ || std::abs(present - dueAt_) > kDueLife) {
        due_ = dueCounts(cards(), present);
        dueAt_ = present;
    }
    return *due_;
}

void Desk::offerUndo(const QString& sentence, std::function<void()> undo) {
    undo_ = std::move(undo);
    Q_EMIT undoable(sentence);
}

void Desk::undo() {
    if (const auto undo = std::exchange(undo_, nullptr)) undo();
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

bool Desk::companion() const { return settings().boolean(kCompanionKey).value_or(true); }

void Desk::setCompanion(bool companion) {
    if (companion == this->companion()) return;
    if (const auto stored = settings().setBoolean(kCompanionKey, companion); !stored) return refuse(stored.error());
    Q_EMIT companionChanged();
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
