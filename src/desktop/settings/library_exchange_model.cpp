#include "desktop/settings/library_exchange_model.h"

#include <chrono>

#include "app/export_place.h"
#include "base/text.h"
#include "desktop/settings/amounts.h"
#include "library/library_exchange.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDeckName = "Tessary Deck.txt";
constexpr std::chrono::milliseconds kSlice{8};  ///< of the main thread's time at once
constexpr std::size_t kPagesAtOnce = 16;

fs::path pathOf(const QUrl& url) { return (url.isLocalFile() ? url.toLocalFile() : url.toString()).toStdString(); }

std::string_view proposedNameOf(const QString& kind) {
    return kind == "json" ? kJsonExportName : kind == "markdown" ? kMarkdownExportName : kDeckName;
}

std::vector<CardContent> cardsOf(const FlashcardStore& store, const QString& page) {
    std::vector<CardContent> cards;
    for (const Flashcard& card : store.cards()) {
        if (page.isEmpty() || card.pageID == fromQml<PageId>(page)) cards.push_back(contentOf(card));
    }
    return cards;
}

}  // namespace

LibraryExchangeModel::~LibraryExchangeModel() { stop_.request_stop(); }

void LibraryExchangeModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    stop_.request_stop();
    slice_.cancel();
    job_.reset();
    notes_.reset();
    busy_ = false;
    desk_ = desk;
    Q_EMIT deskChanged();
    Q_EMIT changed();
}

QString LibraryExchangeModel::proposedName(const QString& kind) const {
    return toQml(std::string(proposedNameOf(kind)));
}

// ---- one at a time ----

bool LibraryExchangeModel::begin(const QString& task) {
    if (desk_ == nullptr) return false;
    if (busy_) {
        Q_EMIT finished(tr("One thing at a time: “%1” is not done yet.").arg(task_));
        return false;
    }
    busy_ = true;
    task_ = task;
    progress_ = -1;
    lastResult_.clear();
    lastProblems_.clear();
    lastFailed_ = false;
    stop_ = {};
    added_ = skipped_ = 0;
    Q_EMIT changed();
    return true;
}

void LibraryExchangeModel::setProgress(qreal progress) {
    progress_ = progress;
    Q_EMIT changed();
}

void LibraryExchangeModel::finish(const QString& sentence, const QStringList& problems) {
    lastResult_ = sentence;
    lastProblems_ = problems;
    end();
}

void LibraryExchangeModel::fail(const std::string& sentence, const QStringList& problems) {
    lastFailed_ = true;
    finish(toQml(sentence), problems);
}

void LibraryExchangeModel::end() {
    busy_ = false;
    job_.reset();
    notes_.reset();
    pages_ = {};
    Q_EMIT changed();
    Q_EMIT finished(lastResult_);
}

void LibraryExchangeModel::cancel() { stop_.request_stop(); }

// ---- out ----

void LibraryExchangeModel::exportTo(const QString& kind, const QUrl& file) {
    if (!begin(kind == "json" ? tr("Saving a backup") : kind == "deck" ? tr("Exporting cards") : tr("Exporting pages")))
        return;
    const auto place =
        exportPlace(pathOf(file), proposedNameOf(kind), desk_->library().folders(), desk_->ports().files);
    if (!place) return fail(place.error());
    desk_->library().flush();
    ExportSource source = exportSource(desk_->library());
    const QString pages = counted(source.pages.size(), tr("page"), tr("pages"));
    const QString done = tr("Exported %1 to %2.").arg("%1", toQml(place->string()));
    if (kind == "json") {
        write(*place, [source = std::move(source)] { return exportedJson(source); }, done.arg(pages));
    } else if (kind == "markdown") {
        write(*place, [source = std::move(source)] { return exportedMarkdown(source); }, done.arg(pages));
    } else if (kind == "deck") {
        std::vector<CardContent> cards = cardsOf(desk_->cards(), page_);
        if (cards.empty()) return fail(tr("There are no cards to export.").toStdString());
        const QString count = counted(cards.size(), tr("card"), tr("cards"));
        write(
            *place, [cards = std::move(cards)] { return std::expected<std::string, std::string>(exportDeck(cards)); },
            done.arg(count));
    } else {
        fail("There is no export of the kind \"" + kind.toStdString() + "\".");
    }
}

void LibraryExchangeModel::backUp() {
    if (!begin(tr("Backing up"))) return;
    if (!desk_->library().loadProblems().empty()) {
        return fail("No backup is made while a file of the library cannot be read.");
    }
    const fs::path& documents = desk_->workspace().paths().documents;
    const fs::path file = autoBackupFile(documents, desk_->workspace().services());
    if (const auto made = desk_->ports().files.createFolders(autoBackupFolder(documents)); !made) {
        return fail("Couldn't save the file: " + made.error().message);
    }
    desk_->library().flush();
    write(
        file, [source = exportSource(desk_->library())] { return exportedJson(source); },
        tr("Backed up to %1.").arg(toQml(file.string())));
}

void LibraryExchangeModel::write(const fs::path& file, Content content, const QString& done) {
    FileSystem& files = desk_->ports().files;
    job_ = std::make_unique<Job>(
        desk_->loop(), [this, &files, file, done, content = std::move(content), stop = stop_.get_token()](
                           const std::stop_token& gone, const Job::Post& post) mutable {
            const auto text = content();
            const bool cancelled = stop.stop_requested() || gone.stop_requested();
            Written written = text ? Written() : std::unexpected(text.error());
            if (text && !cancelled) {
                const auto stored = writeAtomically(files, file, *text);
                if (!stored) written = std::unexpected("Couldn't save the file: " + stored.error().message);
            }
            post([this, written, cancelled, done] {
                if (!written) return fail(written.error());
                finish(cancelled ? tr("Cancelled. Nothing was written.") : done);
            });
        });
}

// ---- in ----

void LibraryExchangeModel::importFrom(const QString& kind, const QUrl& from) {
    if (!begin(kind == "json"   ? tr("Importing a backup")
               : kind == "deck" ? tr("Importing cards")
                                : tr("Importing notes")))
        return;
    const fs::path path = pathOf(from);
    if (kind == "json") return importBackup(path);
    if (kind == "notes") return importNotesOf(path);
    if (kind == "deck") return importDeck(path);
    fail("There is no import of the kind \"" + kind.toStdString() + "\".");
}

void LibraryExchangeModel::importBackup(const fs::path& file) {
    const StoreServices& services = desk_->workspace().services();
    job_ = std::make_unique<Job>(
        desk_->loop(), [this, &services, file, now = desk_->now()](const std::stop_token&, const Job::Post& post) {
            post([this, read = readExport(file, now, services)]() mutable {
                if (!read) return fail(read.error());
                pages_ = std::move(*read);
                addPages(0);
            });
        });
}

void LibraryExchangeModel::addPages(std::size_t from) {
    const auto until = std::chrono::steady_clock::now() + kSlice;
    while (from < pages_.size() && !stop_.stop_requested() && std::chrono::steady_clock::now() < until) {
        const std::size_t count = std::min(kPagesAtOnce, pages_.size() - from);
        const ImportCount counts = addMissing(desk_->library(), std::span(pages_).subspan(from, count));
        added_ += counts.added;
        skipped_ += counts.skipped;
        from += count;
    }
    if (from < pages_.size() && !stop_.stop_requested()) {
        setProgress(static_cast<qreal>(from) / static_cast<qreal>(pages_.size()));
        slice_ = desk_->loop().postAfter(0, [this, from] { addPages(from); });
        return;
    }
    QString sentence = tr("Added %1.").arg(counted(added_, tr("page"), tr("pages")));
    if (skipped_ > 0) {
        sentence += " " + counted(skipped_, tr("page was"), tr("pages were")) + " " + tr("in the library already.");
    }
    if (from < pages_.size()) sentence = tr("Cancelled.") + " " + sentence;
    finish(sentence);
}

void LibraryExchangeModel::importNotesOf(const fs::path& path) {
    NoteImportOptions options;
    options.stop = stop_.get_token();
    options.progress = [this](const NoteImportProgress& progress) {
        progress_ = static_cast<qreal>(progress.done) / static_cast<qreal>(progress.total);
    };
    notes_ = std::make_unique<NoteImport>(desk_->library(), desk_->workspace().services(), desk_->ports().frontMatter,
                                          std::move(options));
    job_ = std::make_unique<Job>(desk_->loop(),
                                 [this, &notes = *notes_, path](const std::stop_token&, const Job::Post& post) {
                                     notes.findNotes({path});
                                     post([this] { takeNotes(); });
                                 });
}

void LibraryExchangeModel::takeNotes() {
    const auto until = std::chrono::steady_clock::now() + kSlice;
    bool more = true;
    while (more && std::chrono::steady_clock::now() < until) more = notes_->step();
    if (!more) return notesTaken();
    Q_EMIT changed();
    slice_ = desk_->loop().postAfter(0, [this] { takeNotes(); });
}

void LibraryExchangeModel::notesTaken() {
    const NoteImportReport report = notes_->report();
    QStringList problems;
    for (const NoteProblem& problem : report.problems) problems.append(toQml(problem.text));
    if (report.added.empty() && report.alreadyThere == 0 && !report.cancelled) {
        return fail(tr("No notes could be imported from there.").toStdString(), problems);
    }
    QString added = counted(report.added.size(), tr("page"), tr("pages"));
    if (!report.notebooks.empty()) {
        added += " " + tr("in %1").arg(counted(report.notebooks.size(), tr("new notebook"), tr("new notebooks")));
    }
    if (report.images > 0) added += " " + tr("with %1").arg(counted(report.images, tr("image"), tr("images")));
    QString sentence = tr("Added %1.").arg(added);
    if (report.alreadyThere > 0) {
        sentence += " " + counted(report.alreadyThere, tr("note was"), tr("notes were")) + " " + tr("already there.");
    }
    if (report.cancelled) sentence = tr("Cancelled.") + " " + sentence;
    finish(sentence, problems);
}

void LibraryExchangeModel::importDeck(const fs::path& file) {
    FileSystem& files = desk_->ports().files;
    job_ = std::make_unique<Job>(desk_->loop(), [this, &files, file](const std::stop_token&, const Job::Post& post) {
        const FileResult<std::string> content = files.read(file);
        auto deck = content ? parseDeck(*content) : std::unexpected(std::string("Couldn't read that file."));
        post([this, file, deck = std::move(deck)] { deckRead(file, deck); });
    });
}

void LibraryExchangeModel::deckRead(const fs::path& file, const std::expected<DeckImport, std::string>& deck) {
    if (!deck) return fail(deck.error());
    PageId page = fromQml<PageId>(page_);
    QString where;
    if (page_.isEmpty()) {
        JournalEntry entry;
        entry.title = scrubbedUtf8(file.stem().string());
        const auto made = desk_->library().addPage(entry);
        if (!made) return fail(made.error());
        page = *made;
        where = " " + tr("on the new page “%1”").arg(toQml(entry.title));
    } else if (!desk_->library().entries().contains(page)) {
        return fail("That page isn't in the library any more.");
    }
    const auto added = desk_->cards().addCards(page, deck->cards, desk_->now());
    QStringList problems;
    for (const DeckProblem& problem : deck->problems) {
        problems.append(tr("Line %1: %2").arg(problem.line).arg(toQml(problem.text)));
    }
    finish(tr("Added %1.").arg(counted(added.size(), tr("card"), tr("cards")) + where), problems);
}

}  // namespace tessary
