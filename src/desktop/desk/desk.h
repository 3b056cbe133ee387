#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QObject>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "app/ai_system.h"
#include "app/settings_catalog.h"
#include "app/system_ports.h"
#include "base/function_ref.h"

namespace tessary {

/// What the window stands on: the opened library and the ports. View models get it as their `desk` and follow its
/// signals; each is emitted once for a burst of changes, after it, from the event loop. What is typed is told at once
/// when it begins and then at most each `kTypingPause`. Main thread only.
class Desk final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the program.")

    /// "system", "light" or "dark".
    Q_PROPERTY(QString theme READ theme WRITE setTheme NOTIFY themeChanged)
    /// Whether the animated companion is shown.
    Q_PROPERTY(bool companion READ companion WRITE setCompanion NOTIFY companionChanged)
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

    static constexpr double kTypingPause = 0.2;  ///< seconds

    /// Makes a change of the library that comes with each keystroke.
    void type(FunctionRef<void()> change);
    /// For what the library is shown by but does not tell of: the order of lists, the colours of tags.
    void listingChanged();

    /// What `libraryChanged` tells of, while it does.
    struct Told {
        std::vector<PageId> pages;
        bool more = true;    ///< something else than pages, too
        bool typed = false;  ///< nothing but what `type` changed
    };
    [[nodiscard]] const Told& told() const { return told_; }

    /// The comparable form of a text, remembered: titles are sorted and filtered by it again and again.
    [[nodiscard]] const std::string& folded(std::string_view text);

    /// Cards that wait for review, by page; at most half a minute old while no card changes.
    [[nodiscard]] const std::unordered_map<PageId, int>& due();

    /// Tells the user what was done, and how to take it back. The offer before lapses. `undo` outlives whoever made it.
    void offerUndo(const QString& sentence, std::function<void()> undo);
    /// Takes back what was offered last, once.
    Q_INVOKABLE void undo();

    [[nodiscard]] QString theme() const;
    void setTheme(const QString& theme);
    [[nodiscard]] bool companion() const;
    void setCompanion(bool companion);
    [[nodiscard]] bool reduceMotion() const;
    [[nodiscard]] QStringList problems() const;

    /// Saves what is pending and makes the automatic backup. Gives what could not be done; empty when all was.
    Q_INVOKABLE QString closeLibrary();
    /// Whether that was tried.
    [[nodiscard]] bool closed() const { return closed_; }

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
    void companionChanged();
    void reduceMotionChanged();
    /// One of the settings' catalogue; also for those with a signal of their own.
    void settingChanged(const QString& key);
    void refused(const QString& sentence);
    /// Done; `undo` takes it back.
    void undoable(const QString& sentence);

private:
    void tellOfSetting(std::string_view key);
    /// Emits `signal` once, however often it is asked to before the event loop comes to it.
    void soon(bool& pending, void (Desk::*signal)());
    void tellLibrary();
    void hearLibrary(const LibraryChange& change);
    void typingPaused();

    Workspace& workspace_;
    SystemPorts& ports_;
    MainLoop& loop_;
    AISystem& ai_;
    bool closed_ = false;
    bool libraryPending_ = false;
    bool cardsPending_ = false;
    bool typing_ = false;  ///< the change that is being made comes from a keystroke
    bool typingWaits_ = false;  ///< and nobody has been told of it
    std::optional<DelayedTask> typingPause_;
    Told gathered_{.pages = {}, .more = false, .typed = true};
    Told told_;
    std::unordered_map<std::string, std::string> folded_;
    std::optional<std::unordered_map<PageId, int>> due_;
    Date dueAt_;
    std::function<void()> undo_;
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
