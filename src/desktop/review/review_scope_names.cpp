#include "desktop/review/review_scope_names.h"

#include <QtCore/QStringList>
#include <set>

#include "desktop/desk/places.h"
#include "desktop/review/review_values.h"

namespace tessary {
namespace {

constexpr qsizetype kNotebooksNamed = 3;

const Notebook* notebookOf(const Desk& desk, PageId id) {
    const JournalEntry* const page = desk.library().entries().find(id);
    return page == nullptr || !page->notebookID ? nullptr : desk.library().notebooks().find(*page->notebookID);
}

QStringList notebooksWithDueCards(const Desk& desk) {
    const ReviewQueue queue =
        buildReviewQueue(desk.cards(), desk.library(), desk.settings(), desk.ports().calendar, {}, desk.now());
    std::set<QString> names;
    for (const std::vector<CardId>* cards : {&queue.main, &queue.learning}) {
        for (const CardId id : *cards) {
            const Flashcard& card = *desk.cards().cards().find(id);
            const Notebook* const notebook = notebookOf(desk, card.pageID);
            if (notebook != nullptr && card.memory.due <= desk.now()) names.insert(toQml(notebook->name).simplified());
        }
    }
    return {names.begin(), names.end()};
}

}  // namespace

QString titleOfScope(const Desk& desk, const ReviewScope& scope) {
    if (!scope.page && scope.place) return deckName(desk, scope.place);
    if (!scope.page) return QObject::tr("All due cards");
    const JournalEntry* const page = desk.library().entries().find(*scope.page);
    const QString title = page == nullptr ? QString() : toQml(page->title).simplified();
    return title.isEmpty() ? QObject::tr("Untitled") : title;
}

QString notebooksOfScope(const Desk& desk, const ReviewScope& scope) {
    if (scope.page) {
        const Notebook* const notebook = notebookOf(desk, *scope.page);
        return notebook == nullptr ? QObject::tr("Loose pages") : toQml(notebook->name).simplified();
    }
    if (scope.place) return QObject::tr("All pages");
    const QStringList names = notebooksWithDueCards(desk);
    const QString shown = names.mid(0, kNotebooksNamed).join(" · ");
    const qsizetype more = names.size() - kNotebooksNamed;
    return more > 0 ? QObject::tr("%1 and %2 more").arg(shown).arg(more) : shown;
}

QString whyNothingIsDue(const Desk& desk, std::optional<Date> nextDue) {
    if (desk.library().entries().empty())
        return QObject::tr("There are no pages yet. Write one, or bring your notes in.");
    if (desk.cards().cards().empty()) {
        return QObject::tr("There are no cards yet. Make some from the text of a page.");
    }
    const QString next = nextDueSentence(nextDue, desk.now());
    return QObject::tr("Nothing is due now.") + (next.isEmpty() ? QString() : " " + next);
}

}  // namespace tessary
