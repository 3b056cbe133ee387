#include "desktop/pages/page_deck_model.h"

#include "base/text.h"
#include "study/scheduler.h"

namespace tessary {

void PageDeckModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    if (desk_ != nullptr) connect(desk_, &Desk::cardsChanged, this, &PageDeckModel::refresh);
    Q_EMIT deskChanged();
    refresh();
}

void PageDeckModel::setPageId(const QString& page) {
    const PageId next = fromQml<PageId>(page);
    if (next == page_) return;
    page_ = next;
    Q_EMIT pageIdChanged();
    refresh();
}

void PageDeckModel::refresh() {
    if (desk_ == nullptr) return;
    RecordList<Flashcard>::Snapshot cards;
    for (const auto& card : desk_->cards().cards().snapshot()) {
        if (card->pageID == page_) cards.push_back(card);
    }
    const bool sameCards = std::ranges::equal(
        cards, cards_, {}, [](const auto& card) { return card->id; }, [](const auto& card) { return card->id; });
    stats_ = desk_->cards().stats(page_, desk_->now());
    if (sameCards) {
        cards_ = std::move(cards);
        if (!cards_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    } else {
        beginResetModel();
        cards_ = std::move(cards);
        endResetModel();
    }
    Q_EMIT refreshed();
}

int PageDeckModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(cards_.size());
}

QVariant PageDeckModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Flashcard& card = *cards_[static_cast<std::size_t>(index.row())];
    const double seconds = card.memory.due - desk_->now();
    const bool isCloze = card.kind == FlashcardKind::cloze;
    switch (role) {
        case CardIdRole: return toQml(card.id);
        case KindRole: return toQml(std::string(enumName(card.kind)));
        case FrontRole: return toQml(card.front);
        case ShownRole: return isCloze ? toQml(clozeWithBlanks(card.front, "[…]")) : toQml(card.front);
        case BackRole: return isCloze ? toQml(joined(clozeTerms(card.front), kClozeTermSeparator)) : toQml(card.back);
        case DueRole:
            if (card.suspended) return tr("Suspended");
            if (card.memory.phase == CardMemory::Phase::fresh) return tr("New");
            return seconds <= 0 ? tr("Due") : toQml(formatInterval(seconds));
        case IsDueRole: return !card.suspended && seconds <= 0;
        case SuspendedRole: return card.suspended;
        case FlaggedRole: return card.flagged;
        default: return {};
    }
}

QHash<int, QByteArray> PageDeckModel::roleNames() const {
    return {{CardIdRole, "cardId"}, {KindRole, "kind"},           {FrontRole, "front"},
            {ShownRole, "shown"},   {BackRole, "back"},           {DueRole, "dueText"},
            {IsDueRole, "isDue"},   {SuspendedRole, "suspended"}, {FlaggedRole, "flagged"}};
}

CardContent PageDeckModel::contentFor(const QString& front, const QString& back) {
    CardContent content;
    content.front = front.trimmed().toStdString();
    content.back = back.trimmed().toStdString();
    const std::vector<std::string> terms = clozeTerms(content.front);
    if (terms.empty()) return content;
    content.kind = FlashcardKind::cloze;
    content.back = joined(terms, kClozeTermSeparator);
    return content;
}

QString PageDeckModel::problemWith(const QString& front, const QString& back) const {
    const CardContent content = contentFor(front, back);
    if (const auto problem = contentProblem(content)) return toQml(*problem);
    return content.back.empty() ? tr("The back is empty.") : QString();
}

void PageDeckModel::add(const QString& front, const QString& back) {
    desk_->cards().addCards(page_, {contentFor(front, back)}, desk_->now());
}

void PageDeckModel::edit(const QString& card, const QString& front, const QString& back) {
    const Flashcard* const present = desk_->cards().cards().find(fromQml<CardId>(card));
    if (present == nullptr) return;
    const CardContent typed = contentFor(front, back);
    CardContent content = contentOf(*present);
    content.front = typed.front;
    if (content.kind != FlashcardKind::multipleChoice) {
        content.kind = typed.kind;
        content.back = typed.back;
    }
    desk_->cards().edit(present->id, std::move(content));
}

void PageDeckModel::remove(const QString& card) { desk_->cards().remove(fromQml<CardId>(card)); }

void PageDeckModel::setFlagged(const QString& card, bool flagged) {
    desk_->cards().setFlagged(fromQml<CardId>(card), flagged);
}

void PageDeckModel::setSuspended(const QString& card, bool suspended) {
    desk_->cards().setSuspended(fromQml<CardId>(card), suspended);
}

}  // namespace tessary
