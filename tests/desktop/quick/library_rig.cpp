#include "desktop/quick/library_rig.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QAccessible>
#include <QtQuick/QQuickWindow>
#include <algorithm>

#include "desktop/companion/plim_item.h"
#include "library/library_json.h"

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

QString LibraryRig::addNotebook(const QString& name) {
    Notebook notebook;
    notebook.name = name.toStdString();
    notebook.createdAt = rig_->desk.now() + notebooks();
    return toQml(rig_->library().addNotebook(std::move(notebook)));
}

QString LibraryRig::addPage(const QString& notebook, const QString& title, const QString& body) {
    const auto in = notebook.isEmpty() ? std::nullopt : std::optional(fromQml<NotebookId>(notebook));
    return toQml(rig_->addPage(title.toStdString(), in, body.toStdString()));
}

QString LibraryRig::addCard(const QString& page, const QString& front, const QString& back) {
    return toQml(rig_->addCard(fromQml<PageId>(page), front.toStdString(), back.toStdString()));
}

QString LibraryRig::addSubpage(const QString& page, const QString& title) {
    JournalEntry subpage;
    subpage.title = title.toStdString();
    subpage.parentID = fromQml<PageId>(page);
    subpage.notebookID = rig_->library().entries().find(*subpage.parentID)->notebookID;
    return toQml(*rig_->library().addPage(subpage));
}

QString LibraryRig::addCloze(const QString& page, const QString& sentence) {
    CardContent content;
    content.kind = FlashcardKind::cloze;
    content.front = sentence.toStdString();
    return toQml(rig_->addCard(fromQml<PageId>(page), content));
}

QString LibraryRig::addChoice(const QString& page, const QString& front, const QStringList& options, int correct) {
    CardContent content;
    content.kind = FlashcardKind::multipleChoice;
    content.front = front.toStdString();
    for (const QString& option : options) content.options.push_back(option.toStdString());
    content.correctIndex = correct;
    content.back = options[correct].toStdString();
    return toQml(rig_->addCard(fromQml<PageId>(page), content));
}

void LibraryRig::addExam(const QString& notebook, const QString& title, int daysAhead) {
    Exam exam;
    exam.notebookID = fromQml<NotebookId>(notebook);
    exam.title = title.toStdString();
    exam.date = rig_->desk.now() + daysAhead * kSecondsPerDay;
    if (!rig_->library().addExam(exam)) qFatal("The exam was refused.");
}

void LibraryRig::trash(const QString& page) {
    if (!rig_->library().deletePage(fromQml<PageId>(page))) qFatal("The page was not deleted.");
}

void LibraryRig::rate(const QString& card, int rating, double daysAgo) {
    rig_->cards().rate(fromQml<CardId>(card), static_cast<Rating>(rating), rig_->desk.now() - daysAgo * kSecondsPerDay);
    (void)rig_->workspace->flush();
}

QVariantMap LibraryRig::card(const QString& card) const {
    const Flashcard* const found = rig_->cards().cards().find(fromQml<CardId>(card));
    if (found == nullptr) return {};
    return {{"front", toQml(found->front)},
            {"reps", static_cast<int>(found->memory.reps)},
            {"suspended", found->suspended},
            {"flagged", found->flagged},
            {"dueIn", found->memory.due - rig_->desk.now()}};
}

QVariantMap LibraryRig::notebook(const QString& name) const {
    const auto& notebooks = rig_->library().notebooks();
    const auto found = std::ranges::find(notebooks, name.toStdString(), &Notebook::name);
    if (found == notebooks.end()) return {};
    return {{"color", toQml((*found).colorHex)},
            {"material", QString::fromUtf8(enumName((*found).material))},
            {"pinned", (*found).isPinned}};
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

void LibraryRig::set(const QString& key, const QString& value) {
    const auto stored = rig_->ports.settings.setText(key.toStdString(), value.toStdString());
    if (!stored) qFatal("%s", stored.error().c_str());
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
    set("flashcards.provider", "ollama");
    set("flashcards.ollamaURL", toQml(server_.address()));
    set("flashcards.makeSummary", "false");
}

QQuickItem* LibraryRig::find(QQuickItem* item, const QString& name) const {
    return item->window() == nullptr ? nullptr : findBelow(item->window()->contentItem(), name);
}

QString LibraryRig::describe(QQuickItem* item) const {
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(item);
    return interface == nullptr ? QString() : interface->text(QAccessible::Description);
}

bool LibraryRig::moves(QQuickItem* companion) const { return qobject_cast<PlimItem*>(companion)->isRunning(); }

int LibraryRig::paints(QQuickItem* companion) const { return qobject_cast<PlimItem*>(companion)->paints(); }

void LibraryRig::pass(QQuickItem* companion, double seconds) {
    constexpr double kStep = 0.1;
    for (double t = 0; t < seconds; t += kStep) qobject_cast<PlimItem*>(companion)->tick(Date{t});
}

}  // namespace tessary
