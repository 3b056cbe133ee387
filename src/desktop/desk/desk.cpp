#include "desktop/desk/desk.h"

#include <QtCore/QMetaObject>

namespace tessary {
namespace {

constexpr const char* kThemeKey = "tessary.theme";
constexpr const char* kReduceMotionKey = "tessary.reduceMotion";

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
    if (const auto stored = changeSetting(**findSetting(kThemeKey), theme.toStdString()); !stored) {
        refuse(stored.error());
    }
}

bool Desk::reduceMotion() const { return settings().boolean(kReduceMotionKey).value_or(false); }

std::expected<void, std::string> Desk::changeSetting(const SettingEntry& entry, const std::string& text) {
    if (const auto stored = storeSetting(settings(), entry, text); !stored) return std::unexpected(stored.error());
    tellOfSetting(entry.key);
    return {};
}

std::expected<void, std::string> Desk::resetSetting(const SettingEntry& entry) {
    if (const auto removed = settings().remove(entry.key); !removed) {
        return std::unexpected("The setting could not be stored: " + removed.error());
    }
    tellOfSetting(entry.key);
    return {};
}

void Desk::tellOfSetting(std::string_view key) {
    if (key == kThemeKey) Q_EMIT themeChanged();
    if (key == kReduceMotionKey) Q_EMIT reduceMotionChanged();
    Q_EMIT settingChanged(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())));
}

QStringList Desk::problems() const {
    QStringList lines;
    for (const std::string& problem : workspace_.loadProblems()) lines.append(toQml(problem));
    return lines;
}

}  // namespace tessary
