#include "desktop/pages/page_model.h"

#include <QtCore/QUrl>
#include <algorithm>

#include "ai/page_source.h"
#include "desktop/desk/moments.h"
#include "study/note_deck.h"

namespace tessary {

void PageModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    if (desk_ != nullptr) connect(desk_, &Desk::libraryChanged, this, &PageModel::changed);
    Q_EMIT deskChanged();
    Q_EMIT changed();
}

void PageModel::setPageId(const QString& id) {
    const PageId next = fromQml<PageId>(id);
    if (next == id_) return;
    id_ = next;
    Q_EMIT pageIdChanged();
    Q_EMIT changed();
}

const JournalEntry* PageModel::page() const {
    return desk_ == nullptr ? nullptr : desk_->library().entries().find(id_);
}

const Notebook* PageModel::notebook() const {
    const JournalEntry* const found = page();
    return found == nullptr || !found->notebookID ? nullptr : desk_->library().notebooks().find(*found->notebookID);
}

template <class Change>
void PageModel::change(Change apply) {
    const JournalEntry* const found = page();
    if (found == nullptr) return;
    JournalEntry edited = *found;
    apply(edited);
    if (edited == *found) return;
    if (const auto updated = desk_->library().updatePage(std::move(edited)); !updated) desk_->refuse(updated.error());
}

QString PageModel::title() const { return exists() ? toQml(page()->title) : QString(); }

void PageModel::setTitle(const QString& title) {
    change([&](JournalEntry& page) { page.title = title.toStdString(); });
}

QString PageModel::body() const { return exists() ? toQml(page()->body) : QString(); }

void PageModel::setBody(const QString& body) {
    change([&](JournalEntry& page) {
        page.body = body.toStdString();
        page.bodyRTF.reset();  // else the rich text would go on standing for the old one
    });
}

QStringList PageModel::tags() const {
    QStringList tags;
    if (exists())
        std::ranges::transform(page()->tags, std::back_inserter(tags), [](const auto& tag) { return toQml(tag); });
    return tags;
}

bool PageModel::favorite() const { return exists() && page()->isFavorite; }

void PageModel::setFavorite(bool favorite) {
    change([&](JournalEntry& page) { page.isFavorite = favorite; });
}

bool PageModel::archived() const { return exists() && page()->isArchived; }

void PageModel::setArchived(bool archived) {
    change([&](JournalEntry& page) { page.isArchived = archived; });
}

QString PageModel::edited() const {
    return exists() ? editedText(lastEdited(*page()), desk_->now(), desk_->ports().calendar) : QString();
}

QVariantList PageModel::path() const {
    QVariantList path;
    const JournalEntry* step = page();
    constexpr qsizetype kDeepest = 100;  // ends a loop of parents, too
    while (step != nullptr && step->parentID && path.size() < kDeepest) {
        step = desk_->library().entries().find(*step->parentID);
        if (step == nullptr) break;
        path.prepend(QVariantMap{{"pageId", toQml(step->id)}, {"title", toQml(step->title)}});
    }
    return path;
}

QString PageModel::notebookId() const { return notebook() == nullptr ? QString() : toQml(notebook()->id); }
QString PageModel::notebookName() const { return notebook() == nullptr ? tr("Loose pages") : toQml(notebook()->name); }
QString PageModel::notebookColor() const {
    return notebook() == nullptr ? QString() : "#" + toQml(notebook()->colorHex);
}

QStringList PageModel::attachments() const {
    QStringList names;
    if (!exists()) return names;
    for (const std::string& name : pdfsOf(*page())) names.append(toQml(name));
    return names;
}

bool PageModel::readOnly() const { return desk_ != nullptr && desk_->workspace().access() != StoreAccess::readWrite; }

void PageModel::addTag(const QString& tag) {
    const std::string text = tag.trimmed().toStdString();
    change([&](JournalEntry& page) {
        if (!text.empty() && std::ranges::find(page.tags, text) == page.tags.end()) page.tags.push_back(text);
    });
}

void PageModel::removeTag(const QString& tag) {
    change([&](JournalEntry& page) { std::erase(page.tags, tag.toStdString()); });
}

void PageModel::attach(const QUrl& file) {
    const auto name = desk_->library().addMedia(MediaKind::pdf, file.toLocalFile().toStdString());
    if (!name) return desk_->refuse(name.error());
    change([&](JournalEntry& page) {
        const std::vector<std::string> present = pdfsOf(page);
        if (std::ranges::find(present, *name) == present.end()) page.pdfAttachments.push_back(*name);
    });
}

QString PageModel::makeCardsFromText() {
    if (!exists()) return {};
    const NoteDeckChange change = updateDeckFromNote(desk_->cards(), id_, page()->body, desk_->now());
    const auto found = change.added + change.updated + change.unchanged;
    if (found == 0) return tr("No questions found. Write “Question :: Answer” or put ==a term== in a sentence.");
    if (change.added + change.updated == 0) return tr("All questions of this page have their cards.");
    const QString added = change.added == 1 ? tr("1 card added") : tr("%1 cards added").arg(change.added);
    return change.updated == 0 ? added : tr("%1, %2 updated").arg(added).arg(change.updated);
}

void PageModel::remove() {
    if (const auto removed = desk_->library().deletePage(id_); !removed) desk_->refuse(removed.error());
}

}  // namespace tessary
