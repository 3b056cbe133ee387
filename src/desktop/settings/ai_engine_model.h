#pragma once

#include <QtCore/QAbstractListModel>
#include <array>
#include <memory>
#include <set>

#include "ai/job.h"
#include "app/ai_access.h"
#include "desktop/desk/desk.h"

namespace tessary {

/// The providers, each with what it is, what it lacks, and its key. The keychain and the providers are asked on threads
/// of their own; a key goes in and never comes out.
class AIEngineModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// The row of the one that is in use.
    Q_PROPERTY(int chosen READ chosen NOTIFY chosenChanged)
    Q_PROPERTY(QString chosenLabel READ chosenLabel NOTIFY chosenChanged)

public:
    enum Role {
        KindRole = Qt::UserRole,  ///< as in the settings
        LabelRole,
        BadgeRole,
        DescriptionRole,
        NotesRole,  ///< what one should know before using it
        StepsRole,  ///< how to get going
        PrivacyRole,  ///< where the text of pages goes
        ModelKeyRole,  ///< the setting that names its model, empty when there is no choice
        AddressKeyRole,  ///< the setting that says where its server is, likewise
        ChosenRole,
        NeedsKeyRole,
        HasKeyRole,
        StateRole,  ///< "looking", "ready", "noKey" or "missing"
        ProblemRole,  ///< of "missing": sentences that say what to do
        SavingRole,  ///< its key is on the way to the keychain, or out of it
        KeyNoteRole,  ///< what became of that
        KeyFailedRole,
        TrialRole,  ///< "", "running", "good" or "bad"
        TrialNoteRole,
    };

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] int chosen() const;
    [[nodiscard]] QString chosenLabel() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void choose(const QString& kind);
    /// Looks at all providers, which may ask the user to unlock the keychain.
    Q_INVOKABLE void look();
    /// Sets its note at once when the key is none; else `keySaved` follows, or a note.
    Q_INVOKABLE void saveKey(const QString& kind, const QString& key);
    Q_INVOKABLE void removeKey(const QString& kind);
    /// Sends one small question to the provider.
    Q_INVOKABLE void tryOut(const QString& kind);

Q_SIGNALS:
    void deskChanged();
    void chosenChanged();
    void keySaved(const QString& kind);

private:
    struct Row {
        bool looking = true;
        bool hasKey = false;
        std::optional<AIError> problem;
        bool saving = false;
        QString keyNote;
        bool keyFailed = false;
        QString trial;
        QString trialNote;
    };

    [[nodiscard]] Row& rowOf(AIProviderKind kind) { return rows_[static_cast<std::size_t>(kind)]; }
    [[nodiscard]] QString stateOf(const Row& row) const;
    [[nodiscard]] QVariant textOf(AIProviderKind kind, int role) const;
    void settingChanged(const QString& key);
    void tell(AIProviderKind kind);
    void lookAt(const std::set<AIProviderKind>& kinds);
    void startLooking();
    void keyDone(AIProviderKind kind, const QString& note, const std::optional<SecretFailure>& failure);

    Desk* desk_ = nullptr;
    std::array<Row, kAIProviderKinds.size()> rows_;
    std::set<AIProviderKind> unlooked_;  ///< come next
    std::unique_ptr<Job> looking_;
    std::unique_ptr<Job> saving_;
    std::unique_ptr<Job> trying_;
};

}  // namespace tessary
