#include "desktop/desk/places.h"

namespace tessary {
namespace {

constexpr const char* kLoose = "loose";
constexpr const char* kLooseColor = "#8B8170";

const Notebook* notebookAt(const Desk& desk, const ShelfItem& place) {
    const NotebookId* const id = std::get_if<NotebookId>(&place);
    return id == nullptr ? nullptr : desk.library().notebooks().find(*id);
}

}  // namespace

std::optional<ShelfItem> placeFromQml(const QString& place) {
    if (place == kLoose) return LoosePages{};
    const auto notebook = NotebookId::parse(place.toStdString());
    return notebook ? std::optional<ShelfItem>(*notebook) : std::nullopt;
}

QString toQml(const ShelfItem& place) {
    const NotebookId* const notebook = std::get_if<NotebookId>(&place);
    return notebook == nullptr ? QString(kLoose) : toQml(*notebook);
}

QString deckName(const Desk& desk, const std::optional<ShelfItem>& place) {
    if (!place) return QObject::tr("All cards");
    if (std::holds_alternative<LoosePages>(*place)) return QObject::tr("Loose pages");
    const Notebook* const notebook = notebookAt(desk, *place);
    return notebook == nullptr ? QString() : toQml(notebook->name).simplified();
}

QString deckColor(const Desk& desk, const std::optional<ShelfItem>& place) {
    if (!place) return {};
    const Notebook* const notebook = notebookAt(desk, *place);
    return notebook == nullptr ? QString(kLooseColor) : "#" + toQml(notebook->colorHex);
}

}  // namespace tessary
