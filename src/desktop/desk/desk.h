#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QObject>
#include <memory>
#include <vector>

#include "app/ai_system.h"
#include "app/settings_catalog.h"
#include "app/system_ports.h"

namespace tessary {

/// What the window stands on: the opened library and the ports. View models get it as their `desk` and follow its
/// signals; each is emitted once for a burst of changes, after it, from the event loop. Main thread only.
class Desk final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the program.")

    /// "system", "light" or "dark".
    Q_PROPERTY(QString theme READ theme WRITE setTheme NOTIFY themeChanged)
    /// Whether the window does without motion.
    Q_PROPERTY(bool reduceMotion READ reduceMotion NOTIFY reduceMotionChanged)
    /// What could not be read at the start; a line each.
    Q_PROPERTY(QStringList problems READ problems CONSTANT)

public:
    /// All arguments outlive the desk.
    Desk(Workspace& workspace, SystemPorts& ports, MainLoop& loop, AISystem& ai);

    [[nodiscard]] Workspace& workspace() const { return workspace_; }
    [[nodiscard]] JournalStore& library() const { return workspace_.library(); }
    [[nodiscard]] FlashcardStore& cards() const { return workspace_.cards(); }
    [[nodiscard]] SystemPorts& ports() const { return ports_; }
    [[nodiscard]] Settings& settings() const { return ports_.settings; }
    [[nodiscard]] MainLoop& loop() const { return loop_; }
    [[nodiscard]] AISystem& ai() const { return ai_; }
    [[nodiscard]] Date now() const { return ports_.clock.now(); }

    [[nodiscard]] QString theme() const;
    void setTheme(const QString& theme);
    [[nodiscard]] bool reduceMotion() const;
    [[nodiscard]] QStringList problems() const;

    /// Stores a setting as the user wrote it and tells all who follow it. The error is for the user.
    std::expected<void, std::string> changeSetting(const SettingEntry& entry, const std::string& text);
    /// Back to the default.
    std::expected<void, std::string> resetSetting(const SettingEntry& entry);

    /// Tells the user that something could not be done; the window shows it.
    void refuse(const std::string& sentence) { Q_EMIT refused(QString::fromStdString(sentence)); }

Q_SIGNALS:
    void libraryChanged();
    void cardsChanged();
    void themeChanged();
    void reduceMotionChanged();
    /// One of the settings' catalogue; also for those with a signal of their own.
    void settingChanged(const QString& key);
    void refused(const QString& sentence);

private:
    void tellOfSetting(std::string_view key);
    /// Emits `signal` once, however often it is asked to before the event loop comes to it.
    void soon(bool& pending, void (Desk::*signal)());

    Workspace& workspace_;
    SystemPorts& ports_;
    MainLoop& loop_;
    AISystem& ai_;
    bool libraryPending_ = false;
    bool cardsPending_ = false;
    std::vector<Subscription> subscriptions_;
};

/// Identities as QML knows them.
template <class Tag>
[[nodiscard]] QString toQml(const Id<Tag>& id) {
    return QString::fromStdString(id.toString());
}
[[nodiscard]] inline QString toQml(const std::string& text) { return QString::fromStdString(text); }

/// All zero for what is no identity.
template <class IdType>
[[nodiscard]] IdType fromQml(const QString& text) {
    return IdType::parse(text.toStdString()).value_or(IdType{});
}

}  // namespace tessary
