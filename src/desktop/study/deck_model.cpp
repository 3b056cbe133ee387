#include "desktop/study/deck_model.h"

#include <algorithm>

#include "base/text.h"
#include "desktop/desk/places.h"
#include "desktop/study/study_values.h"
#include "study/scheduler.h"

namespace tessary {
namespace {

constexpr qsizetype kExcerpt = 240;  // characters that a row shows at most

QString onOneLine(const std::string& text) { return toQml(text).left(kExcerpt).simplified(); }

std::string backOf(const Flashcard& card) {
    if (card.kind == FlashcardKind::cloze) return joined(clozeTerms(card.front), kClozeTermSeparator);
    return card.back;
}

}  // namespace

// ---- what is asked for --------------------------------------------------------------------------------------------

void DeckModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    listing_.cancel();
    if (desk_ != nullptr) desk_->disconnect(this);
    desk_ = desk;
    if (desk_ != nullptr) {
        connect(desk_, &Desk::cardsChanged, this, &DeckModel::refresh);
        connect(desk_, &Desk::libraryChanged, this, &DeckModel::refresh);
    }
    Q_EMIT deskChanged();
    refresh();
}

QString DeckModel::toQmlPlace() const { return toQml(*place_); }

template <class Value>
void DeckModel::ask(Value& member, Value value) {
    if (member == value) return;
    member = std::move(value);
    Q_EMIT queryChanged();
    refresh();
}

void DeckModel::setPlace(const QString& place) {
    const auto asked = placeFromQml(place);
    if (asked != place_) ready_ = false;
    ask(place_, asked);
}

void DeckModel::setSearch(const QString& search) { ask(query_.search, search.simplified().toStdString()); }

QString DeckModel::kind() const { return query_.kind ? toQml(std::string(enumName(*query_.kind))) : QString(); }

void DeckModel::setKind(const QString& kind) { ask(query_.kind, enumNamed<FlashcardKind>(kind.toStdString())); }

void DeckModel::setState(const QString& state) {
    ask(query_.state, enumNamed<DeckQuery::State>(state.toStdString()).value_or(DeckQuery::State::any));
}

void DeckModel::setOrder(const QString& order) {
    ask(query_.order, enumNamed<DeckQuery::Order>(order.toStdString()).value_or(DeckQuery::Order::due));
}

QString DeckModel::heading() const { return desk_ == nullptr ? QString() : deckName(*desk_, place_); }

QString DeckModel::color() const { return desk_ == nullptr ? QString() : deckColor(*desk_, place_); }

// ---- the list -----------------------------------------------------------------------------------------------------

void DeckModel::refresh() {
    if (desk_ == nullptr) return;
    DeckSource source{.cards = desk_->cards().cards().snapshot(),
                      .pages = desk_->library().entries().snapshot(),
                      .place = place_,
                      .leechLapses = desk_->cards().leechLapses(),
                      .now = desk_->now()};
    listing_.ask(
        desk_->loop(),
        [source = std::move(source), query = query_, &text = desk_->ports().text](std::stop_token stop) mutable {
            DeckListing listing = listDeck(source, query, text, stop);
            source = {};
            return listing;
        },
        [this](DeckListing listing) { take(std::move(listing)); });
}

void DeckModel::take(DeckListing listing) {
    ready_ = true;
    stats_ = listing.stats;
    replaceRows(std::move(listing.cards));
    pruneSelection();
    Q_EMIT refreshed();
}

/// Rows before and behind what has changed stay; with nothing in common the list is a new one.
void DeckModel::replaceRows(RecordList<Flashcard>::Snapshot cards) {
    const auto same = [](const auto& a, const auto& b) { return a == b || a->id == b->id; };
    const auto [oldHead, newHead] = std::ranges::mismatch(cards_, cards, same);
    const auto head = static_cast<int>(oldHead - cards_.begin());
    const std::ranges::subrange oldRest(oldHead, cards_.end());
    const std::ranges::subrange newRest(newHead, cards.end());
    const auto tails =
        std::mismatch(std::make_reverse_iterator(cards_.end()), std::make_reverse_iterator(oldHead),
                      std::make_reverse_iterator(cards.end()), std::make_reverse_iterator(newHead), same);
    const auto tail = static_cast<int>(tails.first - std::make_reverse_iterator(cards_.end()));
    if (head + tail == 0) {
        beginResetModel();
        cards_ = std::move(cards);
        return endResetModel();
    }
    const int removed = static_cast<int>(oldRest.size()) - tail;
    const int added = static_cast<int>(newRest.size()) - tail;
    if (removed > 0) {
        beginRemoveRows({}, head, head + removed - 1);
        cards_.erase(cards_.begin() + head, cards_.begin() + head + removed);
        endRemoveRows();
    }
    if (added > 0) {
        beginInsertRows({}, head, head + added - 1);
        cards_.insert(cards_.begin() + head, cards.begin() + head, cards.begin() + head + added);
        endInsertRows();
    }
    cards_ = std::move(cards);
    // Times pass too, so every row may read differently.
    if (!cards_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

int DeckModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(cards_.size());
}

QVariant DeckModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Flashcard& card = *cards_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case CardIdRole: return toQml(card.id);
        case KindRole: return toQml(std::string(enumName(card.kind)));
        case PageIdRole: return toQml(card.pageID);
        case IsDueRole: return !card.suspended && card.memory.due <= desk_->now();
        case SuspendedRole: return card.suspended;
        case FlaggedRole: return card.flagged;
        case SelectedRole: return selection_.contains(card.id);
        default: return textOf(card, role);
    }
}

QVariant DeckModel::textOf(const Flashcard& card, int role) const {
    const Date now = desk_->now();
    const bool isRated = card.memory.lastReview.has_value();
    switch (role) {
        case FrontRole:
            return onOneLine(card.kind == FlashcardKind::cloze ? clozeWithBlanks(card.front, "[…]") : card.front);
        case BackRole: return onOneLine(backOf(card));
        case PageRole: {
            const JournalEntry* const page = desk_->library().entries().find(card.pageID);
            const QString title = page == nullptr ? QString() : toQml(page->title).simplified();
            return title.isEmpty() ? tr("Untitled") : title;
        }
        case DueRole:
            if (card.suspended) return tr("Suspended");
            if (card.memory.phase == CardMemory::Phase::fresh) return tr("New");
            return card.memory.due <= now ? tr("Due") : tr("in %1").arg(toQml(formatInterval(card.memory.due - now)));
        case RecallRole: return isRated ? tr("%1 %").arg(qRound(retrievability(card.memory, now) * 100)) : QString();
        case StabilityRole: return isRated ? toQml(formatInterval(card.memory.stability * kSecondsPerDay)) : QString();
        default: return {};
    }
}

QHash<int, QByteArray> DeckModel::roleNames() const {
    return {{CardIdRole, "cardId"},       {KindRole, "kind"},           {FrontRole, "front"},
            {BackRole, "back"},           {PageIdRole, "pageId"},       {PageRole, "page"},
            {DueRole, "dueText"},         {IsDueRole, "isDue"},         {RecallRole, "recallText"},
            {StabilityRole, "stability"}, {SuspendedRole, "suspended"}, {FlaggedRole, "flagged"},
            {SelectedRole, "selected"}};
}

// ---- what is picked -----------------------------------------------------------------------------------------------

void DeckModel::selectionDone(int first, int last) {
    if (first <= last) Q_EMIT dataChanged(index(first), index(last), {SelectedRole});
    Q_EMIT selectionChanged();
}

void DeckModel::toggle(int row) {
    if (row < 0 || row >= rowCount()) return;
    const CardId id = cards_[static_cast<std::size_t>(row)]->id;
    if (selection_.erase(id) == 0) selection_.insert(id);
    anchor_ = row;
    selectionDone(row, row);
}

void DeckModel::extendTo(int row) {
    if (row < 0 || row >= rowCount()) return;
    const auto [first, last] = std::minmax(row, std::clamp(anchor_, 0, rowCount() - 1));
    for (int i = first; i <= last; ++i) selection_.insert(cards_[static_cast<std::size_t>(i)]->id);
    anchor_ = row;
    selectionDone(first, last);
}

void DeckModel::selectAll() {
    for (const auto& card : cards_) selection_.insert(card->id);
    selectionDone(0, rowCount() - 1);
}

void DeckModel::clearSelection() {
    if (selection_.empty()) return;
    selection_.clear();
    selectionDone(0, rowCount() - 1);
}

/// What is not shown any more is not picked either: nothing is done to cards that nobody sees.
void DeckModel::pruneSelection() {
    if (selection_.empty()) return;
    std::unordered_set<CardId> kept;
    for (const auto& card : cards_) {
        if (selection_.contains(card->id)) kept.insert(card->id);
    }
    if (kept.size() == selection_.size()) return;
    selection_ = std::move(kept);
    Q_EMIT selectionChanged();
}

// ---- what is done -------------------------------------------------------------------------------------------------

std::unordered_set<CardId> DeckModel::meant(const QString& card) const {
    return card.isEmpty() ? selection_ : std::unordered_set{fromQml<CardId>(card)};
}

void DeckModel::tell(RecordList<Flashcard>::Snapshot before, const QString& one, const QString& many) {
    if (before.empty()) return;
    before_ = std::move(before);
    Q_EMIT done(before_.size() == 1 ? one : many.arg(before_.size()));
}

void DeckModel::suspend(const QString& card, bool suspended) {
    auto before = desk_->cards().setSuspended(meant(card), suspended);
    suspended ? tell(std::move(before), tr("Card suspended."), tr("%1 cards suspended."))
              : tell(std::move(before), tr("Card is back in reviews."), tr("%1 cards are back in reviews."));
}

void DeckModel::flag(const QString& card, bool flagged) {
    auto before = desk_->cards().setFlagged(meant(card), flagged);
    flagged ? tell(std::move(before), tr("Card flagged."), tr("%1 cards flagged."))
            : tell(std::move(before), tr("Flag taken off."), tr("Flags taken off %1 cards."));
}

void DeckModel::reset(const QString& card) {
    tell(desk_->cards().resetCards(meant(card), desk_->now()), tr("The card counts as new again."),
         tr("%1 cards count as new again."));
}

void DeckModel::remove(const QString& card) {
    tell(desk_->cards().removeCards(meant(card)), tr("Card deleted."), tr("%1 cards deleted."));
}

void DeckModel::undo() { desk_->cards().restore(std::exchange(before_, {})); }

}  // namespace tessary
