#include "desktop/shelf/cover_choices.h"

#include <QtCore/QVariantMap>
#include <array>

#include "desktop/desk/desk.h"
#include "desktop/shelf/cover_label.h"
#include "desktop/shelf/cover_values.h"
#include "library/library_json.h"

namespace tessary {
namespace {

constexpr std::array kColors{
    CoverColor{"#FFDB00", QT_TRANSLATE_NOOP("CoverChoices", "Yellow")},
    CoverColor{"#4F7F57", QT_TRANSLATE_NOOP("CoverChoices", "Green")},
    CoverColor{"#35528F", QT_TRANSLATE_NOOP("CoverChoices", "Blue")},
    CoverColor{"#7A3E2B", QT_TRANSLATE_NOOP("CoverChoices", "Brown")},
    CoverColor{"#D9734E", QT_TRANSLATE_NOOP("CoverChoices", "Orange")},
    CoverColor{"#2F7F83", QT_TRANSLATE_NOOP("CoverChoices", "Teal")},
    CoverColor{"#8A5A83", QT_TRANSLATE_NOOP("CoverChoices", "Plum")},
    CoverColor{"#6E7F3C", QT_TRANSLATE_NOOP("CoverChoices", "Olive")},
    CoverColor{"#AC3327", QT_TRANSLATE_NOOP("CoverChoices", "Red")},
    CoverColor{"#D99AA8", QT_TRANSLATE_NOOP("CoverChoices", "Rose")},
    CoverColor{"#6FA3C7", QT_TRANSLATE_NOOP("CoverChoices", "Sky")},
    CoverColor{"#2E2B33", QT_TRANSLATE_NOOP("CoverChoices", "Charcoal")},
};

template <class E>
QStringList namesOf() {
    QStringList names;
    for (const auto& [value, name] : EnumNames<E>::names) names.append(toQml(std::string(name)));
    return names;
}

}  // namespace

CoverColor coverColor(int index) { return kColors[static_cast<std::size_t>(index) % kColors.size()]; }

QVariantList CoverChoices::colors() const {
    QVariantList colors;
    for (const CoverColor& each : kColors) {
        colors.append(QVariantMap{{"color", QString::fromLatin1(each.hex)}, {"name", tr(each.name)}});
    }
    return colors;
}

QStringList CoverChoices::materials() const { return namesOf<CoverMaterial>(); }
QStringList CoverChoices::patterns() const { return namesOf<CoverPattern>(); }
QStringList CoverChoices::labelStyles() const { return namesOf<CoverLabelStyle>(); }

QStringList CoverChoices::materialNames() const {
    return {tr("Classic"), tr("Cloth"), tr("Leather"), tr("Kraft"), tr("Glossy")};
}

QStringList CoverChoices::patternNames() const {
    return {tr("None"), tr("Lines"), tr("Grid"), tr("Dots"), tr("Stripes"), tr("Waves"), tr("Checks")};
}

QStringList CoverChoices::labelStyleNames() const { return {tr("Glass"), tr("Sticker"), tr("Embossed")}; }

QStringList CoverChoices::emojis() const {
    QStringList drawable;
    for (const char* const emoji : {"🧬", "⚗️",  "📐", "🧮", "🔭", "⚛️", "🌍", "🏛️", "⚖️",  "🧠",
                                    "🩺", "💻", "🎨", "🎹", "📚", "✍️", "🗣️", "🌿", "💶", "⚽"}) {
        const QString text = QString::fromUtf8(emoji);
        if (canDrawEmoji(text)) drawable.append(text);
    }
    return drawable;
}

bool CoverChoices::isColor(const QString& text) const { return !coverColorHex(text).isEmpty(); }
QString CoverChoices::normalized(const QString& text) const {
    const QString hex = coverColorHex(text);
    return hex.isEmpty() ? hex : "#" + hex;
}

}  // namespace tessary
