#include "desktop/generation/generation_model.h"

#include <algorithm>

#include "base/text.h"
#include "desktop/review/card_face.h"

namespace tessary {

void GenerationModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    if (desk_ != nullptr) disconnect(desk_, nullptr, this, nullptr);
    generator_.reset();
    clear();
    desk_ = desk;
    if (desk_ != nullptr) connect(desk_, &Desk::cardsChanged, this, &GenerationModel::follow);
    Q_EMIT deskChanged();
}

GenerationModel::Phase GenerationModel::phase() const {
    switch (state_.phase) {
        case FlashcardGenerator::Phase::idle: return Idle;
        case FlashcardGenerator::Phase::running: return Running;
        case FlashcardGenerator::Phase::done: return Done;
        case FlashcardGenerator::Phase::failed: return Failed;
        case FlashcardGenerator::Phase::cancelled: break;
    }
    return Cancelled;
}

QString GenerationModel::provider() const { return toQml(std::string(labelOf(options_.settings.provider))); }

QString GenerationModel::progress() const {
    return state_.progress.text.empty() ? tr("Writing your cards…") : toQml(state_.progress.text);
}

int GenerationModel::kept() const { return static_cast<int>(std::ranges::count(rows_, true, &Row::kept)); }

QString GenerationModel::hint() const {
    return state_.providerFailed ? tr("Check the engine in Settings → Flashcards.") : QString();
}

QStringList GenerationModel::warnings() const {
    QStringList lines;
    for (const std::string& problem : state_.problems) lines.append(toQml(problem));
    if (state_.duplicates == 1) lines.append(tr("1 card was left out: another one asks the same."));
    if (state_.duplicates > 1) {
        lines.append(tr("%1 cards were left out: others ask the same.").arg(state_.duplicates));
    }
    return lines;
}

void GenerationModel::start(GenerationChoices* choices) {
    if (desk_ == nullptr || choices == nullptr || !choices->problem().isEmpty()) return;
    if (running()) return desk_->refuse(tr("Cards for “%1” are still being written.").arg(pageTitle_).toStdString());
    choices->remember();
    pageTitle_ = choices->pageTitle();
    begin(choices->page(), choices->options());
}

void GenerationModel::retry() {
    if (desk_ != nullptr && !running()) begin(page_, options_);
}

void GenerationModel::begin(PageId page, const GenerationOptions& options) {
    clear();
    page_ = page;
    options_ = options;
    generator_ = std::make_unique<FlashcardGenerator>(page, desk_->ai().generatorServices(desk_->workspace()));
    watching_ = generator_->changed.connect([this](const FlashcardGenerator::State& state) { take(state); });
    if (const auto started = generator_->start(options); !started) desk_->refuse(started.error());
}

void GenerationModel::take(const FlashcardGenerator::State& state) {
    const bool wasRunning = running();
    if (state.cards.size() > rows_.size()) {
        beginInsertRows({}, written(), static_cast<int>(state.cards.size()) - 1);
        while (rows_.size() < state.cards.size()) {
            const Flashcard* const card = desk_->cards().cards().find(state.cards[rows_.size()]);
            rows_.push_back({.card = card == nullptr ? Flashcard() : *card, .kept = card != nullptr});
        }
        endInsertRows();
    }
    state_ = state;
    Q_EMIT changed();
    if (wasRunning && !running()) Q_EMIT ended();
}

void GenerationModel::cancel() {
    if (generator_) generator_->cancel();
}

void GenerationModel::undoAll() {
    if (desk_ == nullptr || running()) return;
    std::unordered_set<CardId> cards;
    for (const Row& row : rows_) {
        if (row.kept) cards.insert(row.card.id);
    }
    const std::size_t removed = desk_->cards().removeCards(cards).size();
    const std::optional<PageId> summary = state_.summaryPage;
    clear();
    if (summary && desk_->library().entries().find(*summary) != nullptr) {
        if (const auto deleted = desk_->library().deletePage(*summary); !deleted) desk_->refuse(deleted.error());
    }
    Q_EMIT told(removed == 1 ? tr("1 card taken back") : tr("%1 cards taken back").arg(removed));
}

void GenerationModel::leave() {
    if (!running()) clear();
}

void GenerationModel::clear() {
    beginResetModel();
    rows_.clear();
    state_ = {};
    endResetModel();
    Q_EMIT changed();
}

void GenerationModel::follow() {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        Row& row = rows_[i];
        const Flashcard* const card = desk_->cards().cards().find(row.card.id);
        if (card == nullptr ? !row.kept : row.kept && row.card == *card) continue;
        row.kept = card != nullptr;
        if (card != nullptr) row.card = *card;
        rowChanged(static_cast<int>(i));
    }
}

void GenerationModel::setKept(int at, bool kept) {
    Row* const row = rowAt(at);
    if (row == nullptr || row->kept == kept) return;
    if (kept) {
        const CardId added = desk_->cards().addCards(row->card.pageID, {contentOf(row->card)}, desk_->now()).front();
        row->card = *desk_->cards().cards().find(added);
    } else {
        desk_->cards().remove(row->card.id);
    }
    row->kept = kept;
    rowChanged(at);
}

QVariantMap GenerationModel::draft(int at) const {
    return at < 0 || at >= written() ? QVariantMap() : draftOf(contentOf(rows_[static_cast<std::size_t>(at)].card));
}

QString GenerationModel::problemOf(int at, const QVariantMap& draft) const {
    if (at < 0 || at >= written()) return {};
    const CardContent content = withDraft(contentOf(rows_[static_cast<std::size_t>(at)].card), draft);
    if (const auto problem = contentProblem(content)) return toQml(*problem);
    return content.back.empty() ? tr("The back is empty.") : QString();
}

void GenerationModel::edit(int at, const QVariantMap& draft) {
    Row* const row = rowAt(at);
    if (row == nullptr || !row->kept || !problemOf(at, draft).isEmpty()) return;
    if (!desk_->cards().edit(row->card.id, withDraft(contentOf(row->card), draft))) return;
    row->card = *desk_->cards().cards().find(row->card.id);
    rowChanged(at);
}

GenerationModel::Row* GenerationModel::rowAt(int row) {
    return desk_ == nullptr || row < 0 || row >= written() ? nullptr : &rows_[static_cast<std::size_t>(row)];
}

void GenerationModel::rowChanged(int row) {
    Q_EMIT dataChanged(index(row), index(row));
    Q_EMIT changed();
}

int GenerationModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : written(); }

QVariant GenerationModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    const Flashcard& card = row.card;
    const bool isCloze = card.kind == FlashcardKind::cloze;
    switch (role) {
        case KindNameRole: return faceOf(card, desk_->library()).kindName;
        case FrontRole: return toQml(isCloze ? clozeWithBlanks(card.front, "[…]") : card.front);
        case BackRole: return toQml(isCloze ? joined(clozeTerms(card.front), kClozeTermSeparator) : card.back);
        case SourceRole: return faceOf(card, desk_->library()).source;
        case KeptRole: return row.kept;
        default: return {};
    }
}

QHash<int, QByteArray> GenerationModel::roleNames() const {
    return {{KindNameRole, "kindName"},
            {FrontRole, "front"},
            {BackRole, "back"},
            {SourceRole, "source"},
            {KeptRole, "kept"}};
}

}  // namespace tessary
