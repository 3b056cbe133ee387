#include "desktop/quick/library_rig.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QAccessible>
#include <QtQuick/QQuickWindow>
#include <algorithm>

namespace tessary {
namespace {

QString accessibleName(QQuickItem* item) {
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(item);
    return interface == nullptr ? QString() : interface->text(QAccessible::Name);
}

QQuickItem* findBelow(QQuickItem* item, const QString& name) {
    if (!item->isVisible()) return nullptr;
    if (accessibleName(item) == name) return item;
    const QList<QQuickItem*> children = item->childItems();
    // What is drawn last lies on top: a menu before the button beneath it.
    for (auto child = children.rbegin(); child != children.rend(); ++child)
        if (QQuickItem* const found = findBelow(*child, name)) return found;
    return nullptr;
}

}  // namespace

void LibraryRig::open() {
    // The screen of the test before may still be about: it sees the desk go before the library does.
    auto before = std::exchange(rig_, std::make_unique<DeskRig<>>());
    Q_EMIT opened();
}

QString LibraryRig::welcome() { return toQml(makeWelcomeNotebook(*rig_->workspace)->notebook); }

QString LibraryRig::addNotebook(const QString& name) { return toQml(rig_->library().addNotebook(name.toStdString())); }

QString LibraryRig::addPage(const QString& notebook, const QString& title, const QString& body) {
    const auto in = notebook.isEmpty() ? std::nullopt : std::optional(fromQml<NotebookId>(notebook));
    return toQml(rig_->addPage(title.toStdString(), in, body.toStdString()));
}

QString LibraryRig::addCard(const QString& page, const QString& front, const QString& back) {
    return toQml(rig_->addCard(fromQml<PageId>(page), front.toStdString(), back.toStdString()));
}

void LibraryRig::rate(const QString& card, int rating, double daysAgo) {
    rig_->cards().rate(fromQml<CardId>(card), static_cast<Rating>(rating), rig_->desk.now() - daysAgo * kSecondsPerDay);
    (void)rig_->workspace->flush();
}

QString LibraryRig::titleOf(const QString& page) const {
    const JournalEntry* const found = rig_->library().entries().find(fromQml<PageId>(page));
    return found == nullptr ? QString() : toQml(found->title);
}

QString LibraryRig::bodyOf(const QString& page) const {
    const JournalEntry* const found = rig_->library().entries().find(fromQml<PageId>(page));
    return found == nullptr ? QString() : toQml(found->body);
}

QString LibraryRig::parentOf(const QString& page) const {
    const JournalEntry* const found = rig_->library().entries().find(fromQml<PageId>(page));
    return found == nullptr || !found->parentID ? QString() : toQml(*found->parentID);
}

QStringList LibraryRig::tagsOf(const QString& page) const {
    QStringList tags;
    const JournalEntry* const found = rig_->library().entries().find(fromQml<PageId>(page));
    if (found == nullptr) return tags;
    for (const std::string& tag : found->tags) tags.append(toQml(tag));
    return tags;
}

QString LibraryRig::tagColor(const QString& tag) const {
    const auto colors = rig_->library().tagColors();
    const auto found = colors.find(tag.toStdString());
    return found == colors.end() ? QString() : toQml(found->second);
}

bool LibraryRig::isPinned(const QString& page) const {
    const std::vector<PageId> pinned = rig_->library().pinnedPages();
    return std::ranges::find(pinned, fromQml<PageId>(page)) != pinned.end();
}

QString LibraryRig::setting(const QString& key) const {
    return toQml(rig_->ports.settings.text(key.toStdString()).value_or(""));
}

void LibraryRig::serveCards(const QStringList& fronts) {
    QJsonArray cards;
    for (const QString& front : fronts) {
        cards.append(QJsonObject{{"kind", "basic"}, {"front", front}, {"back", "Because."}});
    }
    const QByteArray content = QJsonDocument(QJsonObject{{"cards", cards}}).toJson();
    const QJsonObject message{{"content", QString::fromUtf8(content)}};
    serve({.body = QJsonDocument(QJsonObject{{"message", message}}).toJson().toStdString()});
}

void LibraryRig::serveFailures() { serve({.status = 500, .body = R"({"error":{"message":"out of memory"}})"}); }

void LibraryRig::serve(LoopbackServer::Answer answer) {
    server_.setHandler([answer = std::move(answer)](const LoopbackServer::Received& request) {
        if (request.path != "/api/tags") return answer;
        return LoopbackServer::Answer{.body = R"({"models":[{"name":"llama3.2:latest"}]})"};
    });
    for (const auto& [key, value] : {std::pair<std::string, std::string>{"flashcards.provider", "ollama"},
                                     {"flashcards.ollamaURL", server_.address()},
                                     {"flashcards.makeSummary", "false"}}) {
        if (const auto stored = rig_->ports.settings.setText(key, value); !stored) qFatal("%s", stored.error().c_str());
    }
}

QQuickItem* LibraryRig::find(QQuickItem* item, const QString& name) const {
    return item->window() == nullptr ? nullptr : findBelow(item->window()->contentItem(), name);
}

QString LibraryRig::describe(QQuickItem* item) const {
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(item);
    return interface == nullptr ? QString() : interface->text(QAccessible::Description);
}

}  // namespace tessary
