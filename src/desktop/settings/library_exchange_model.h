#pragma once

#include <QtCore/QUrl>
#include <functional>
#include <memory>
#include <vector>

#include "ai/job.h"
#include "desktop/desk/desk.h"
#include "library/note_import.h"
#include "study/deck_file.h"

namespace tessary {

/// The ways out of the library and into it, one at a time. Files are read and written on a thread of their own, pages
/// come in slice by slice; `finished` tells the outcome in words, also of what was not begun.
class LibraryExchangeModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// The page that decks go to and come from. Without one a deck has all cards, and what comes in makes a new page.
    Q_PROPERTY(QString page MEMBER page_ NOTIFY pageChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY changed)
    /// "Importing notes".
    Q_PROPERTY(QString task READ task NOTIFY changed)
    /// 0 to 1; -1 while nobody knows.
    Q_PROPERTY(qreal progress READ progress NOTIFY changed)
    /// What became of the last one, with its problems a line each.
    Q_PROPERTY(QString lastResult READ lastResult NOTIFY changed)
    Q_PROPERTY(QStringList lastProblems READ lastProblems NOTIFY changed)
    Q_PROPERTY(bool lastFailed READ lastFailed NOTIFY changed)

public:
    ~LibraryExchangeModel() override;

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] bool busy() const { return busy_; }
    [[nodiscard]] QString task() const { return task_; }
    [[nodiscard]] qreal progress() const { return progress_; }
    [[nodiscard]] QString lastResult() const { return lastResult_; }
    [[nodiscard]] QStringList lastProblems() const { return lastProblems_; }
    [[nodiscard]] bool lastFailed() const { return lastFailed_; }

    /// "json" (a backup), "markdown" or "deck".
    Q_INVOKABLE void exportTo(const QString& kind, const QUrl& file);
    /// "json", "notes" (a folder, or one note) or "deck".
    Q_INVOKABLE void importFrom(const QString& kind, const QUrl& from);
    /// Today's file among the automatic backups.
    Q_INVOKABLE void backUp();
    /// What has come in by then stays.
    Q_INVOKABLE void cancel();
    /// What a file of this kind is called unless the user says otherwise.
    Q_INVOKABLE [[nodiscard]] QString proposedName(const QString& kind) const;

Q_SIGNALS:
    void deskChanged();
    void pageChanged();
    void changed();
    void finished(const QString& sentence);

private:
    using Written = std::expected<void, std::string>;
    /// Gives what a file is to hold; for any thread.
    using Content = std::move_only_function<std::expected<std::string, std::string>()>;

    bool begin(const QString& task);
    void setProgress(qreal progress);
    void finish(const QString& sentence, const QStringList& problems = {});
    void fail(const std::string& sentence, const QStringList& problems = {});
    void end();

    void write(const std::filesystem::path& file, Content content, const QString& done);
    void importBackup(const std::filesystem::path& file);
    void addPages(std::size_t from);
    void importNotesOf(const std::filesystem::path& path);
    void takeNotes();
    void notesTaken();
    void importDeck(const std::filesystem::path& file);
    void deckRead(const std::filesystem::path& file, const std::expected<DeckImport, std::string>& deck);

    Desk* desk_ = nullptr;
    QString page_;
    bool busy_ = false;
    QString task_;
    qreal progress_ = -1;
    QString lastResult_;
    QStringList lastProblems_;
    bool lastFailed_ = false;
    std::stop_source stop_;
    std::vector<JournalEntry> pages_;  ///< of a backup that is coming in
    std::size_t added_ = 0;
    std::size_t skipped_ = 0;
    std::unique_ptr<NoteImport> notes_;
    DelayedTask slice_;
    std::unique_ptr<Job> job_;  ///< last: it is over before what it works on goes
};

}  // namespace tessary
