#include "desktop/study/deck_editor.h"

#include <QtCore/QCollator>
#include <algorithm>

#include "desktop/review/card_face.h"
#include "desktop/study/study_values.h"
#include "platform/atomic_write.h"
#include "study/deck_file.h"

namespace tessary {
namespace {

QString countOfCards(std::size_t count) {
    return countOf(static_cast<std::int64_t>(count), QObject::tr("card"), QObject::tr("cards"));
}

std::expected<DeckImport, std::string> readDeck(const FileSystem& files, const std::filesystem::path& path) {
    const FileResult<std::string> content = files.read(path);
    if (!content) return std::unexpected("Couldn't read that file.");
    return parseDeck(*content);
}

QString importText(const DeckImport& deck) {
    QString text = QObject::tr("Added %1.").arg(countOfCards(deck.cards.size()));
    if (deck.problems.empty()) return text;
    const DeckProblem& first = deck.problems.front();
    const QString what = QObject::tr("line %1: %2").arg(first.line).arg(toQml(first.text));
    return text + " " +
           (deck.problems.size() == 1
                ? QObject::tr("One line was left out, %1").arg(what)
                : QObject::tr("%1 lines were left out, the first is %2").arg(deck.problems.size()).arg(what));
}

}  // namespace

QVariantMap DeckEditor::draft(const QString& card) const {
    const Flashcard* const present = desk().cards().cards().find(fromQml<CardId>(card));
    QVariantMap draft = draftOf(present == nullptr ? CardContent{} : contentOf(*present));
    const QVariantList places = present == nullptr ? pages() : QVariantList();
    draft["card"] = present == nullptr ? QString() : card;
    draft["pageId"] = present != nullptr ? toQml(present->pageID)
                      : places.isEmpty() ? QString()
                                         : places.front().toMap()["pageId"].toString();
    return draft;
}

/// What a form does not show of the card stays.
CardContent DeckEditor::contentOfDraft(const QVariantMap& draft) const {
    const Flashcard* const present = desk().cards().cards().find(fromQml<CardId>(draft["card"].toString()));
    CardContent content = present == nullptr ? CardContent{} : contentOf(*present);
    content.kind = enumNamed<FlashcardKind>(draft["kind"].toString().toStdString()).value_or(FlashcardKind::basic);
    if (content.kind != FlashcardKind::multipleChoice) {
        content.options.clear();
        content.correctIndex.reset();
    }
    return withDraft(std::move(content), draft);
}

QString DeckEditor::problemOf(const QVariantMap& draft) const {
    const CardContent content = contentOfDraft(draft);
    if (const auto problem = contentProblem(content)) return toQml(*problem);
    if (content.back.empty()) return tr("The back is empty.");
    if (!desk().library().entries().contains(fromQml<PageId>(draft["pageId"].toString()))) {
        return tr("A card needs a page.");
    }
    return {};
}

void DeckEditor::save(const QVariantMap& draft) {
    if (!problemOf(draft).isEmpty()) return;
    const QString card = draft["card"].toString();
    if (card.isEmpty()) {
        desk().cards().addCards(fromQml<PageId>(draft["pageId"].toString()), {contentOfDraft(draft)}, desk().now());
    } else if (!desk().cards().edit(fromQml<CardId>(card), contentOfDraft(draft))) {
        desk().refuse(tr("This card is gone.").toStdString());
    }
}

QVariantList DeckEditor::pages() const {
    struct Entry {
        QString title;
        QString id;
    };
    std::vector<Entry> entries;
    for (const JournalEntry& page : desk().library().entries()) {
        if (deck_->shelfPlace() && !standsIn(page, *deck_->shelfPlace())) continue;
        const QString title = toQml(page.title).simplified();
        entries.push_back({.title = title.isEmpty() ? tr("Untitled") : title, .id = toQml(page.id)});
    }
    const QCollator collator;
    std::ranges::stable_sort(entries,
                             [&](const Entry& a, const Entry& b) { return collator.compare(a.title, b.title) < 0; });
    QVariantList pages;
    for (const Entry& entry : entries) pages.append(QVariantMap{{"pageId", entry.id}, {"title", entry.title}});
    return pages;
}

// ---- files --------------------------------------------------------------------------------------------------------

void DeckEditor::begin() {
    busy_ = true;
    Q_EMIT busyChanged();
}

void DeckEditor::end(const QString& sentence) {
    busy_ = false;
    Q_EMIT busyChanged();
    Q_EMIT told(sentence);
}

void DeckEditor::exportTo(const QUrl& file) {
    if (busy_) return;
    begin();
    DeckSource source{.cards = desk().cards().cards().snapshot(),
                      .pages = desk().library().entries().snapshot(),
                      .place = deck_->shelfPlace(),
                      .leechLapses = 0,
                      .now = desk().now()};
    work_ = std::make_unique<Job>(
        desk().loop(),
        [this, source = std::move(source), picked = deck_->selection(), &ports = desk().ports(),
         path = std::filesystem::path(file.toLocalFile().toStdString())](std::stop_token stop, const Job::Post& post) {
            std::unordered_set<PageId> pages;
            for (const auto& page : source.pages) {
                if (!source.place || standsIn(*page, *source.place)) pages.insert(page->id);
            }
            std::vector<CardContent> contents;
            for (const auto& card : source.cards) {
                if (!pages.contains(card->pageID) || (!picked.empty() && !picked.contains(card->id))) continue;
                contents.push_back(contentOf(*card));
            }
            if (stop.stop_requested()) return;
            const FileResult<void> written = writeAtomically(ports.files, path, exportDeck(contents));
            const QString name = QString::fromStdString(path.filename().string());
            const QString sentence = written ? tr("%1 saved to %2.").arg(countOfCards(contents.size()), name)
                                             : tr("Couldn't save the file: %1").arg(toQml(written.error().message));
            post([this, sentence] { end(sentence); });
        });
}

void DeckEditor::importFrom(const QUrl& file, const QString& page) {
    if (busy_) return;
    begin();
    work_ = std::make_unique<Job>(desk().loop(), [this, page = fromQml<PageId>(page), &files = desk().ports().files,
                                                  path = std::filesystem::path(file.toLocalFile().toStdString())](
                                                     std::stop_token, const Job::Post& post) {
        auto deck = readDeck(files, path);
        post([this, page, deck = std::move(deck)]() mutable {
            if (!deck) return end(toQml(deck.error()));
            const QString sentence = importText(*deck);
            desk().cards().addCards(page, std::move(deck->cards), desk().now());
            end(sentence);
        });
    });
}

}  // namespace tessary
