#include "desktop/shelf/notebook_look.h"

#include "desktop/shelf/cover_choices.h"
#include "desktop/shelf/cover_values.h"

namespace tessary {
namespace {

QString text(const std::optional<std::string>& value) { return QString::fromStdString(value.value_or("")); }

std::optional<std::string> nonEmpty(const QVariant& value) {
    const QString trimmed = value.toString().trimmed();
    return trimmed.isEmpty() ? std::nullopt : std::optional(trimmed.toStdString());
}

template <HasEnumNames E>
void applyName(const QVariantMap& look, const QString& key, E& value) {
    value = enumNamed<E>(look.value(key).toString().toStdString()).value_or(value);
}

}  // namespace

QString qmlColor(const std::string& hex) {
    const QString digits = coverColorHex(QString::fromStdString(hex));
    return digits.isEmpty() ? digits : "#" + digits;
}

QVariantMap lookOf(const Notebook& notebook) {
    return {{"name", QString::fromStdString(notebook.name)},
            {"subtitle", text(notebook.subtitle)},
            {"emoji", text(notebook.emoji)},
            {"color", qmlColor(notebook.colorHex)},
            {"accent", qmlColor(notebook.accentHex.value_or(""))},
            {"material", qmlName(notebook.material)},
            {"pattern", qmlName(notebook.pattern)},
            {"labelStyle", qmlName(notebook.labelStyle)},
            {"band", notebook.hasBand},
            {"ribbon", notebook.hasRibbon}};
}

void applyLook(const QVariantMap& look, Notebook& notebook) {
    if (look.contains("name")) notebook.name = look["name"].toString().trimmed().toStdString();
    if (look.contains("subtitle")) notebook.subtitle = nonEmpty(look["subtitle"]);
    if (look.contains("emoji")) notebook.emoji = nonEmpty(look["emoji"]);
    if (const QString hex = coverColorHex(look.value("color").toString()); !hex.isEmpty()) {
        notebook.colorHex = hex.toStdString();
    }
    if (look.contains("accent")) {
        const QString hex = coverColorHex(look["accent"].toString());
        notebook.accentHex = hex.isEmpty() ? std::nullopt : std::optional(hex.toStdString());
    }
    applyName(look, "material", notebook.material);
    applyName(look, "pattern", notebook.pattern);
    applyName(look, "labelStyle", notebook.labelStyle);
    if (look.contains("band")) notebook.hasBand = look["band"].toBool();
    if (look.contains("ribbon")) notebook.hasRibbon = look["ribbon"].toBool();
}

Notebook freshNotebook(int present) {
    Notebook notebook;
    notebook.colorHex = coverColorHex(coverColor(present).hex).toStdString();
    notebook.material = CoverMaterial::cloth;
    notebook.labelStyle = CoverLabelStyle::sticker;
    return notebook;
}

}  // namespace tessary
