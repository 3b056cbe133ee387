#include "desktop/pages/page_model.h"

#include <QtCore/QDate>
#include <QtCore/QLocale>
#include <algorithm>

#include "desktop/desk/moments.h"
#include "desktop/pages/page_tags.h"
#include "study/note_deck.h"

namespace tessary {
namespace {

constexpr double kNoon = 12 * 60 * kSecondsPerMinute;  // a moment of the day that no change of clocks moves off it

QDate dayOf(Date moment, const LocalCalendar& calendar) {
    const CivilDay day = calendar.civilTime(moment).day;
    return {day.year, day.month, day.day};
}

QDate parsedDay(const QString& text) { return QDate::fromString(text.trimmed(), Qt::ISODate); }

}  // namespace

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
    if (!exists()) return;
    desk_->type([&] { change([&](JournalEntry& page) { page.title = title.toStdString(); }); });
}

QString PageModel::body() const { return exists() ? toQml(page()->body) : QString(); }

void PageModel::setBody(const QString& body) {
    if (!exists()) return;
    desk_->type([&] {
        change([&](JournalEntry& page) {
            std::string text = body.toStdString();
            if (text == page.body) return;
            page.body = std::move(text);
            page.bodyRTF.reset();  // else the rich text would go on standing for the old one
        });
    });
}

QStringList PageModel::tagNames() const {
    QStringList names;
    if (exists())
        std::ranges::transform(page()->tags, std::back_inserter(names), [](const auto& tag) { return toQml(tag); });
    return names;
}

QVariantList PageModel::tags() const {
    QVariantList tags;
    if (!exists()) return tags;
    const auto colors = desk_->library().tagColors();
    for (const std::string& tag : page()->tags)
        tags.append(QVariantMap{{"name", toQml(tag)}, {"color", tagColor(colors, tag)}});
    return tags;
}

/// Runs of what is no white space, signs alone left out.
int PageModel::words() const {
    if (!exists()) return 0;
    int words = 0;
    bool inWord = false;
    for (const QChar c : toQml(page()->body)) {
        if (c.isSpace()) {
            inWord = false;
        } else if (!inWord && (c.isLetterOrNumber() || c.isSurrogate())) {
            inWord = true;
            ++words;
        }
    }
    return words;
}

bool PageModel::favorite() const { return exists() && page()->isFavorite; }

void PageModel::setFavorite(bool favorite) {
    change([&](JournalEntry& page) { page.isFavorite = favorite; });
}

bool PageModel::pinned() const {
    if (!exists()) return false;
    const std::vector<PageId> pinned = desk_->library().pinnedPages();
    return std::ranges::find(pinned, id_) != pinned.end();
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

// ---- expiry -----------------------------------------------------------------------------------------------------

QString PageModel::expiryDay() const {
    if (!exists() || !page()->expirationDate) return {};
    return dayOf(*page()->expirationDate, desk_->ports().calendar).toString(Qt::ISODate);
}

bool PageModel::expired() const {
    return exists() && page()->expirationDate &&
           dayOf(*page()->expirationDate, desk_->ports().calendar) <= dayOf(desk_->now(), desk_->ports().calendar);
}

QString PageModel::expiryText() const {
    if (!exists() || !page()->expirationDate) return {};
    const QDate day = dayOf(*page()->expirationDate, desk_->ports().calendar);
    const QDate today = dayOf(desk_->now(), desk_->ports().calendar);
    const qint64 days = today.daysTo(day);
    const QString date = QLocale::c().toString(day, day.year() == today.year() ? "d MMM" : "d MMM yyyy");
    if (days == 0) return tr("Page expires today");
    if (days == 1) return tr("Expires tomorrow");
    return days < 0 ? tr("Expired %1").arg(date) : tr("Expires %1").arg(date);
}

void PageModel::setExpiry(std::optional<Date> moment) {
    change([&](JournalEntry& page) { page.expirationDate = moment; });
}

void PageModel::expireIn(int days) {
    const LocalCalendar& calendar = desk_->ports().calendar;
    setExpiry(calendar.addingDays(calendar.startOfDay(desk_->now()), days));
}

void PageModel::setExpiryDay(const QString& day) {
    if (day.trimmed().isEmpty()) return setExpiry(std::nullopt);
    const QDate wanted = parsedDay(day);
    if (!wanted.isValid()) return;
    const LocalCalendar& calendar = desk_->ports().calendar;
    const auto days = static_cast<int>(dayOf(desk_->now(), calendar).daysTo(wanted));
    setExpiry(calendar.startOfDay(calendar.addingDays(calendar.startOfDay(desk_->now()) + kNoon, days)));
}

QString PageModel::dayInWords(const QString& day) const {
    const QDate wanted = parsedDay(day);
    return wanted.isValid() ? QLocale::c().toString(wanted, "dddd, d MMMM yyyy") : QString();
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

}  // namespace tessary
