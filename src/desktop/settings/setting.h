#pragma once

#include <QtCore/QVariant>

#include "desktop/desk/desk.h"

namespace tessary {

/// One setting of the catalogue, as a control shows and changes it. What is changed is stored at once.
class Setting : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY changed)
    /// A key of the catalogue, as in "flashcards.newPerDay".
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY changed)
    /// The one in effect, in the setting's own type.
    Q_PROPERTY(QVariant value READ value NOTIFY changed)
    /// The same, written out.
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString defaultText READ defaultText NOTIFY changed)
    /// Nobody has changed it.
    Q_PROPERTY(bool isDefault READ isDefault NOTIFY changed)
    Q_PROPERTY(QStringList choices READ choices NOTIFY changed)
    /// Among the choices; -1 when there are none.
    Q_PROPERTY(int choice READ choice NOTIFY changed)
    /// Why the last change was not taken; empty again with the next one that is.
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString key() const { return key_; }
    void setKey(const QString& key);
    [[nodiscard]] QVariant value() const;
    [[nodiscard]] QString text() const;
    [[nodiscard]] QString defaultText() const;
    [[nodiscard]] bool isDefault() const;
    [[nodiscard]] QStringList choices() const;
    [[nodiscard]] int choice() const { return static_cast<int>(choices().indexOf(text())); }
    [[nodiscard]] QString problem() const { return problem_; }

    /// False when it does not fit: then the old value stays and `problem` says why.
    Q_INVOKABLE bool set(const QString& text);
    Q_INVOKABLE bool reset();
    /// The nearest value that a whole number of `steps` away from this one is allowed.
    Q_INVOKABLE bool stepBy(int steps);
    Q_INVOKABLE [[nodiscard]] bool canStepBy(int steps) const;
    /// Whether the words of a text that is a list, as in "basic,cloze", have this one among them.
    Q_INVOKABLE [[nodiscard]] bool has(const QString& word) const { return text().split(',').contains(word); }
    /// Puts it in or takes it out; the last one stays in.
    Q_INVOKABLE bool setHas(const QString& word, bool in);
    Q_INVOKABLE void forgetProblem() { tellProblem({}); }

Q_SIGNALS:
    void changed();
    void problemChanged();

private:
    void tellProblem(const QString& problem);
    bool taken(const std::expected<void, std::string>& stored);
    [[nodiscard]] std::string stepped(int steps) const;

    Desk* desk_ = nullptr;
    QString key_;
    const SettingEntry* entry_ = nullptr;  ///< null for a key that is none
    QString problem_;
};

}  // namespace tessary
