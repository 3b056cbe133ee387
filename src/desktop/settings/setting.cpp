#include "desktop/settings/setting.h"

#include <algorithm>

namespace tessary {
namespace {

QVariant toVariant(const SettingValue& value) {
    if (const std::string* const text = std::get_if<std::string>(&value)) return toQml(*text);
    if (const std::int64_t* const whole = std::get_if<std::int64_t>(&value)) return static_cast<qlonglong>(*whole);
    if (const double* const number = std::get_if<double>(&value)) return *number;
    return std::get<bool>(value);
}

}  // namespace

void Setting::setDesk(Desk* desk) {
    if (desk == desk_) return;
    if (desk_ != nullptr) disconnect(desk_, nullptr, this, nullptr);
    desk_ = desk;
    if (desk_ != nullptr) {
        connect(desk_, &Desk::settingChanged, this, [this](const QString& key) {
            if (key == key_) Q_EMIT changed();
        });
    }
    Q_EMIT changed();
}

void Setting::setKey(const QString& key) {
    if (key == key_) return;
    key_ = key;
    entry_ = findSetting(key.toStdString()).value_or(nullptr);
    tellProblem({});
    Q_EMIT changed();
}

QVariant Setting::value() const {
    return desk_ == nullptr || entry_ == nullptr ? QVariant() : toVariant(settingValue(desk_->settings(), *entry_));
}

QString Setting::text() const {
    if (desk_ == nullptr || entry_ == nullptr) return {};
    return toQml(describeSetting(settingValue(desk_->settings(), *entry_)));
}

QString Setting::defaultText() const {
    return entry_ == nullptr ? QString() : toQml(describeSetting(entry_->defaultValue));
}

bool Setting::isDefault() const { return desk_ == nullptr || entry_ == nullptr || !isSet(desk_->settings(), *entry_); }

QStringList Setting::choices() const {
    QStringList choices;
    if (entry_ == nullptr) return choices;
    for (const std::string_view choice : entry_->choices) choices.append(toQml(std::string(choice)));
    return choices;
}

bool Setting::set(const QString& text) {
    if (desk_ == nullptr || entry_ == nullptr) return false;
    const std::string wanted = text.toStdString();
    // The desk's sentence names the key, which means nothing in a window.
    const auto stored = desk_->changeSetting(*entry_, wanted);
    if (!stored && !fits(*entry_, wanted)) {
        tellProblem(tr("“%1” doesn't fit here: it takes %2.").arg(text, toQml(whatIsExpected(*entry_))));
        return false;
    }
    return taken(stored);
}

bool Setting::reset() { return desk_ != nullptr && entry_ != nullptr && taken(desk_->resetSetting(*entry_)); }

bool Setting::stepBy(int steps) { return canStepBy(steps) && taken(desk_->changeSetting(*entry_, stepped(steps))); }

bool Setting::canStepBy(int steps) const {
    return desk_ != nullptr && entry_ != nullptr && stepped(steps) != text().toStdString();
}

bool Setting::setHas(const QString& word, bool in) {
    QStringList words = text().split(',', Qt::SkipEmptyParts);
    words.removeAll(word);
    if (in) words.append(word);
    if (!words.isEmpty()) return set(words.join(','));
    tellProblem(tr("At least one has to stay."));
    return false;
}

std::string Setting::stepped(int steps) const {
    const double step = std::holds_alternative<double>(entry_->defaultValue) ? 0.5 : 1;
    const double next = value().toDouble() + steps * step;
    const double kept = std::max(std::min(next, entry_->maximum.value_or(next)), entry_->minimum.value_or(next));
    return QString::number(kept, 'g', 12).toStdString();
}

bool Setting::taken(const std::expected<void, std::string>& stored) {
    tellProblem(stored ? QString() : toQml(stored.error()));
    return stored.has_value();
}

void Setting::tellProblem(const QString& problem) {
    if (problem == problem_) return;
    problem_ = problem;
    Q_EMIT problemChanged();
}

}  // namespace tessary
