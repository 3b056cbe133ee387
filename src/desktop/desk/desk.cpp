#include "desktop/desk/desk.h"

#include <QtCore/QMetaObject>
#include <algorithm>
#include <cmath>

#include "desktop/desk/due_counts.h"

namespace tessary {
namespace {

constexpr const char* kThemeKey = "tessary.theme";
constexpr const char* kCompanionKey = "tessary.companion";
constexpr const char* kReduceMotionKey = "tessary.reduceMotion";
constexpr std::size_t kMostPagesTold = 8;  // with more it is cheaper to look at all
constexpr std::size_t kFewTexts = 1000;
constexpr double kDueLife = 30;  // seconds; cards fall due while nothing changes

}  // namespace

Desk::Desk(Workspace& workspace, SystemPorts& ports, MainLoop& loop, AISystem& ai)
    : workspace_(workspace), ports_(ports), loop_(loop), ai_(ai) {
    subscriptions_.push_back(library().changed.connect([this](const LibraryChange& change) { hearLibrary(change); }));
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

void Desk::listingChanged() {
    gathered_.more = true;
    gathered_.typed = false;
    tellLibrary();
}

void Desk::tellLibrary() {
    if (std::exchange(libraryPending_, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            libraryPending_ = false;
            told_ = std::exchange(gathered_, Told{.pages = {}, .more = false, .typed = true});
            Q_EMIT libraryChanged();
        },
        Qt::QueuedConnection);
}

void Desk::hearLibrary(const LibraryChange& change) {
    for (const PageId& page : change.pages) {
        if (gathered_.more) break;
        if (std::ranges::find(gathered_.pages, page) == gathered_.pages.end()) gathered_.pages.push_back(page);
        gathered_.more = gathered_.pages.size() > kMostPagesTold;
    }
    if (change.trash || !change.notebooks.empty() || !change.exams.empty()) gathered_.more = true;
    if (!typing_) gathered_.typed = false;
    if (typing_ && typingPause_) {
        typingWaits_ = true;
        return;
    }
    typingWaits_ = false;
    tellLibrary();
    if (typing_) typingPause_ = loop_.postAfter(kTypingPause, [this] { typingPaused(); });
}

void Desk::typingPaused() {
    typingPause_.reset();
    if (!std::exchange(typingWaits_, false)) return;
    tellLibrary();
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

const std::string& Desk::folded(std::string_view text) {
    if (folded_.size() > 2 * library().entries().size() + kFewTexts) folded_.clear();
    const auto [found, isNew] = folded_.try_emplace(std::string(text));
    if (isNew) found->second = ports_.text.folded(text);
    return found->second;
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
    if (key == kCompanionKey) Q_EMIT companionChanged();
    Q_EMIT settingChanged(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())));
}

bool Desk::companion() const { return settings().boolean(kCompanionKey).value_or(true); }

void Desk::setCompanion(bool companion) {
    if (companion == this->companion()) return;
    if (const auto stored = changeSetting(**findSetting(kCompanionKey), companion ? "true" : "false"); !stored) {
        refuse(stored.error());
    }
}

QString Desk::closeLibrary() {
    closed_ = true;
    const auto closed = workspace_.close();
    return closed ? QString() : toQml(closed.error());
}

QStringList Desk::problems() const {
    QStringList lines;
    for (const std::string& problem : workspace_.loadProblems()) lines.append(toQml(problem));
    return lines;
}

}  // namespace tessary
