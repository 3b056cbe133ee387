#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QStringList>
#include <memory>
#include <vector>

#include "desktop/generation/generation_choices.h"

namespace tessary {

/// Has cards written for one page at a time, and goes on while nobody looks; its rows are the cards of that run. One
/// for each window. When it goes, a run ends, and what is in the deck stays there.
class GenerationModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(Phase phase READ phase NOTIFY changed)
    Q_PROPERTY(bool running READ running NOTIFY changed)
    Q_PROPERTY(QString pageId READ pageId NOTIFY changed)
    Q_PROPERTY(QString pageTitle READ pageTitle NOTIFY changed)
    Q_PROPERTY(QString provider READ provider NOTIFY changed)
    /// "Writing cards — part 2 of 3"
    Q_PROPERTY(QString progress READ progress NOTIFY changed)
    /// 0 to 1, of the whole run.
    Q_PROPERTY(double fraction READ fraction NOTIFY changed)
    Q_PROPERTY(int written READ written NOTIFY changed)
    /// Of those written, how many are in the deck.
    Q_PROPERTY(int kept READ kept NOTIFY changed)
    Q_PROPERTY(bool hasSummary READ hasSummary NOTIFY changed)
    /// At the end: what came of the run, or why it failed.
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed)
    /// What may help after a failure; may be empty.
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    /// At the end: what was left out, a sentence each.
    Q_PROPERTY(QStringList warnings READ warnings NOTIFY changed)

public:
    enum Phase { Idle, Running, Done, Failed, Cancelled };
    Q_ENUM(Phase)
    enum Role { KindNameRole = Qt::UserRole, FrontRole, BackRole, SourceRole, KeptRole };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] Phase phase() const;
    [[nodiscard]] bool running() const { return phase() == Running; }
    [[nodiscard]] QString pageId() const { return toQml(page_); }
    [[nodiscard]] QString pageTitle() const { return pageTitle_; }
    [[nodiscard]] QString provider() const;
    [[nodiscard]] QString progress() const;
    [[nodiscard]] double fraction() const { return state_.progress.fraction; }
    [[nodiscard]] int written() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] int kept() const;
    [[nodiscard]] bool hasSummary() const { return state_.summaryPage.has_value(); }
    [[nodiscard]] QString outcome() const { return toQml(state_.text); }
    [[nodiscard]] QString hint() const;
    [[nodiscard]] QStringList warnings() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Begins a run and remembers the choices. Refused, with a word to the user, while one goes on.
    Q_INVOKABLE void start(tessary::GenerationChoices* choices);
    /// Once more as asked for last.
    Q_INVOKABLE void retry();
    /// The run ends soon after.
    Q_INVOKABLE void cancel();
    /// Takes all cards of the run out of the deck in one change; a summary goes to the Trash.
    Q_INVOKABLE void undoAll();
    /// Forgets a run that is over; its cards stay.
    Q_INVOKABLE void leave();
    /// Takes one card out of the deck, or puts it back as a new one.
    Q_INVOKABLE void setKept(int row, bool kept);
    /// "kind", "front", "back", "options", "correctIndex", "explanation".
    Q_INVOKABLE [[nodiscard]] QVariantMap draft(int row) const;
    /// What is wrong with the changed card, as a sentence; empty when nothing is.
    Q_INVOKABLE [[nodiscard]] QString problemOf(int row, const QVariantMap& draft) const;
    Q_INVOKABLE void edit(int row, const QVariantMap& draft);

Q_SIGNALS:
    void deskChanged();
    void changed();
    /// A run is over, by itself or by `cancel`.
    void ended();
    /// Something was done that the user should be told of.
    void told(const QString& sentence);

private:
    /// A card of the run as it is, or was when it was taken out.
    struct Row {
        Flashcard card;
        bool kept = true;
    };

    void begin(PageId page, const GenerationOptions& options);
    void take(const FlashcardGenerator::State& state);
    /// Follows what was done to the cards elsewhere.
    void follow();
    void clear();
    void rowChanged(int row);
    [[nodiscard]] Row* rowAt(int row);

    Desk* desk_ = nullptr;
    PageId page_;
    QString pageTitle_;
    GenerationOptions options_;
    FlashcardGenerator::State state_;
    std::vector<Row> rows_;
    Subscription watching_;
    std::unique_ptr<FlashcardGenerator> generator_;
};

}  // namespace tessary
