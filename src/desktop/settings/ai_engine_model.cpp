#include "desktop/settings/ai_engine_model.h"

#include "desktop/settings/provider_texts.h"

namespace tessary {
namespace {

QString nameOf(AIProviderKind kind) { return toQml(std::string(enumName(kind))); }

std::optional<AIProviderKind> kindNamed(const QString& name) { return enumNamed<AIProviderKind>(name.toStdString()); }

/// The keychain's own sentence after the one that says what did not work.
QString failureNote(const QString& what, const SecretFailure& failure) {
    return what + ". " + toQml(keychainError(failure).text()) + ".";
}

}  // namespace

void AIEngineModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    if (desk_ != nullptr) disconnect(desk_, nullptr, this, nullptr);
    looking_.reset();
    saving_.reset();
    trying_.reset();
    unlooked_.clear();
    beginResetModel();
    rows_ = {};
    desk_ = desk;
    endResetModel();
    if (desk_ != nullptr) connect(desk_, &Desk::settingChanged, this, &AIEngineModel::settingChanged);
    Q_EMIT deskChanged();
    Q_EMIT chosenChanged();
}

int AIEngineModel::chosen() const {
    return desk_ == nullptr ? -1 : static_cast<int>(readAISettings(desk_->settings()).provider);
}

QString AIEngineModel::chosenLabel() const {
    if (desk_ == nullptr) return {};
    return toQml(std::string(labelOf(kAIProviderKinds[static_cast<std::size_t>(chosen())])));
}

int AIEngineModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant AIEngineModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const AIProviderKind kind = kAIProviderKinds[static_cast<std::size_t>(index.row())];
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case ChosenRole: return index.row() == chosen();
        case NeedsKeyRole: return needsKey(kind);
        case HasKeyRole: return row.hasKey;
        case StateRole: return stateOf(row);
        case ProblemRole: return row.problem ? adviceFor(kind, *row.problem) : QString();
        case SavingRole: return row.saving;
        case KeyNoteRole: return row.keyNote;
        case KeyFailedRole: return row.keyFailed;
        case TrialRole: return row.trial;
        case TrialNoteRole: return row.trialNote;
        default: return textOf(kind, role);
    }
}

QVariant AIEngineModel::textOf(AIProviderKind kind, int role) const {
    switch (role) {
        case KindRole: return nameOf(kind);
        case LabelRole: return toQml(std::string(labelOf(kind)));
        case BadgeRole: return toQml(std::string(badgeOf(kind)));
        case DescriptionRole: return toQml(std::string(descriptionOf(kind)));
        case NotesRole: return notesOf(kind);
        case StepsRole: return stepsOf(kind);
        case PrivacyRole: return toQml(privacyLineOf(kind));
        case ModelKeyRole: return modelSettingOf(kind);
        case AddressKeyRole: return addressSettingOf(kind);
        default: return {};
    }
}

QString AIEngineModel::stateOf(const Row& row) const {
    if (row.looking) return "looking";
    if (!row.problem) return "ready";
    return row.problem->kind == AIError::Kind::missingKey ? "noKey" : "missing";
}

QHash<int, QByteArray> AIEngineModel::roleNames() const {
    return {{KindRole, "kind"},
            {LabelRole, "label"},
            {BadgeRole, "badge"},
            {DescriptionRole, "description"},
            {NotesRole, "notes"},
            {StepsRole, "steps"},
            {PrivacyRole, "privacy"},
            {ModelKeyRole, "modelKey"},
            {AddressKeyRole, "addressKey"},
            {ChosenRole, "isChosen"},
            {NeedsKeyRole, "needsKey"},
            {HasKeyRole, "hasKey"},
            {StateRole, "readiness"},
            {ProblemRole, "problem"},
            {SavingRole, "saving"},
            {KeyNoteRole, "keyNote"},
            {KeyFailedRole, "keyFailed"},
            {TrialRole, "trial"},
            {TrialNoteRole, "trialNote"}};
}

void AIEngineModel::choose(const QString& kind) {
    if (desk_ == nullptr) return;
    if (const auto stored = desk_->changeSetting(**findSetting("flashcards.provider"), kind.toStdString()); !stored) {
        desk_->refuse(stored.error());
    }
}

void AIEngineModel::settingChanged(const QString& key) {
    if (key == "flashcards.provider") {
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {ChosenRole});
        Q_EMIT chosenChanged();
    }
    for (const AIProviderKind kind : kAIProviderKinds) {
        if (key != modelSettingOf(kind) && key != addressSettingOf(kind)) continue;
        rowOf(kind).trial.clear();
        lookAt({kind});
    }
}

void AIEngineModel::tell(AIProviderKind kind) {
    const QModelIndex row = index(static_cast<int>(kind));
    Q_EMIT dataChanged(row, row);
}

// ---- looking ----

void AIEngineModel::look() {
    if (desk_ != nullptr) lookAt({kAIProviderKinds.begin(), kAIProviderKinds.end()});
}

void AIEngineModel::lookAt(const std::set<AIProviderKind>& kinds) {
    unlooked_.insert(kinds.begin(), kinds.end());
    for (const AIProviderKind kind : kinds) {
        rowOf(kind).looking = true;
        tell(kind);
    }
    if (!looking_) startLooking();
}

void AIEngineModel::startLooking() {
    const AISettings settings = readAISettings(desk_->settings());
    std::vector<AIProviderKind> kinds(unlooked_.begin(), unlooked_.end());
    std::ranges::stable_partition(kinds, [&](AIProviderKind kind) { return kind == settings.provider; });
    unlooked_.clear();
    const auto seen = [this](const ProviderState& state) {
        if (unlooked_.contains(state.kind)) return;  // its settings have changed meanwhile
        Row& row = rowOf(state.kind);
        row.looking = false;
        row.hasKey = state.hasKey;
        row.problem = state.problem;
        tell(state.kind);
    };
    const auto done = [this] {
        looking_.reset();
        if (!unlooked_.empty()) startLooking();
    };
    looking_ = std::make_unique<Job>(desk_->loop(), [seen, done, settings, kinds, &ai = desk_->ai()](
                                                        const std::stop_token& stop, const Job::Post& post) {
        lookAtProviders(ai, settings, kinds, stop,
                        [&](const ProviderState& state) { post([seen, state] { seen(state); }); });
        post(done);
    });
}

// ---- keys ----

void AIEngineModel::saveKey(const QString& kind, const QString& key) {
    const std::optional<AIProviderKind> provider = kindNamed(kind);
    if (desk_ == nullptr || !provider || !needsKey(*provider) || saving_) return;
    Row& row = rowOf(*provider);
    const auto checked = checkedKey(key.toStdString());
    row.keyFailed = !checked;
    row.keyNote = checked ? QString() : toQml(checked.error());
    row.saving = checked.has_value();
    row.trial.clear();
    tell(*provider);
    if (!checked) return;
    saving_ = std::make_unique<Job>(desk_->loop(), [this, provider = *provider, key = *checked, &ai = desk_->ai()](
                                                       const std::stop_token& stop, const Job::Post& post) {
        const auto written = ai.secrets().write(keyNameOf(provider), keyLabelOf(provider), key, stop);
        const auto failure = written ? std::nullopt : std::optional(written.error());
        post([this, provider, failure] {
            keyDone(provider, failure ? tr("Couldn't save the key to the keychain") : tr("Saved in your keychain"),
                    failure);
            if (!failure) Q_EMIT keySaved(nameOf(provider));
        });
    });
}

void AIEngineModel::removeKey(const QString& kind) {
    const std::optional<AIProviderKind> provider = kindNamed(kind);
    if (desk_ == nullptr || !provider || !needsKey(*provider) || saving_) return;
    rowOf(*provider).saving = true;
    rowOf(*provider).trial.clear();
    tell(*provider);
    saving_ = std::make_unique<Job>(desk_->loop(), [this, provider = *provider, &ai = desk_->ai()](
                                                       const std::stop_token& stop, const Job::Post& post) {
        const auto removed = ai.secrets().remove(keyNameOf(provider), stop);
        const auto failure = removed ? std::nullopt : std::optional(removed.error());
        post([this, provider, failure] {
            keyDone(provider,
                    failure ? tr("Couldn't remove the key from the keychain") : tr("Removed from your keychain"),
                    failure);
        });
    });
}

void AIEngineModel::keyDone(AIProviderKind kind, const QString& note, const std::optional<SecretFailure>& failure) {
    saving_.reset();
    Row& row = rowOf(kind);
    row.saving = false;
    row.keyFailed = failure.has_value();
    row.keyNote = failure ? failureNote(note, *failure) : note;
    tell(kind);
    if (!failure) lookAt({kind});
}

// ---- trying ----

void AIEngineModel::tryOut(const QString& kind) {
    const std::optional<AIProviderKind> provider = kindNamed(kind);
    if (desk_ == nullptr || !provider) return;
    trying_.reset();
    for (const AIProviderKind other : kAIProviderKinds) {
        if (rowOf(other).trial != "running") continue;
        rowOf(other).trial.clear();
        tell(other);
    }
    rowOf(*provider).trial = "running";
    rowOf(*provider).trialNote.clear();
    tell(*provider);
    AISettings settings = readAISettings(desk_->settings());
    settings.provider = *provider;
    trying_ = std::make_unique<Job>(
        desk_->loop(), [this, settings, &ai = desk_->ai()](const std::stop_token& stop, const Job::Post& post) {
            const AIResult<void> tried = tryProvider(ai, settings, stop);
            post([this, settings, tried] {
                trying_.reset();
                Row& row = rowOf(settings.provider);
                if (row.trial == "running") {  // else its settings have changed meanwhile
                    row.trial = tried ? "good" : "bad";
                    row.trialNote =
                        tried ? tr("It answered. Everything works.") : adviceFor(settings.provider, tried.error());
                }
                tell(settings.provider);
            });
        });
}

}  // namespace tessary
