#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>

namespace tessary {

/// A colour notebooks are offered in.
struct CoverColor {
    const char* hex;
    const char* name;
};

/// The offered colour at `index`, from the first again after the last.
[[nodiscard]] CoverColor coverColor(int index);

/// What a cover can be made of, for the sheet that makes one. Words of the files and words for people stand at the same
/// index.
class CoverChoices : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Of `{color, name}`.
    Q_PROPERTY(QVariantList colors READ colors CONSTANT)
    Q_PROPERTY(QStringList materials READ materials CONSTANT)
    Q_PROPERTY(QStringList materialNames READ materialNames CONSTANT)
    Q_PROPERTY(QStringList patterns READ patterns CONSTANT)
    Q_PROPERTY(QStringList patternNames READ patternNames CONSTANT)
    Q_PROPERTY(QStringList labelStyles READ labelStyles CONSTANT)
    Q_PROPERTY(QStringList labelStyleNames READ labelStyleNames CONSTANT)
    /// Those of the suggestions that a font of this computer has.
    Q_PROPERTY(QStringList emojis READ emojis CONSTANT)

public:
    [[nodiscard]] QVariantList colors() const;
    [[nodiscard]] QStringList materials() const;
    [[nodiscard]] QStringList materialNames() const;
    [[nodiscard]] QStringList patterns() const;
    [[nodiscard]] QStringList patternNames() const;
    [[nodiscard]] QStringList labelStyles() const;
    [[nodiscard]] QStringList labelStyleNames() const;
    [[nodiscard]] QStringList emojis() const;

    /// Whether `text` is a colour as "#RRGGBB", with or without the "#".
    Q_INVOKABLE [[nodiscard]] bool isColor(const QString& text) const;
    /// As "#RRGGBB"; empty for what is no colour.
    Q_INVOKABLE [[nodiscard]] QString normalized(const QString& text) const;
};

}  // namespace tessary
