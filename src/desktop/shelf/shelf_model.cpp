#include "desktop/shelf/shelf_model.h"

#include <QtCore/QLocale>
#include <algorithm>
#include <tuple>
#include <unordered_map>

#include "desktop/shelf/notebook_look.h"
#include "library/library_json.h"

namespace tessary {
namespace {

constexpr const char* kLoose = "loose";

Notebook looseNotebook() {
    Notebook notebook;
    notebook.name = ShelfModel::tr("Loose pages").toStdString();
    notebook.colorHex = "8B8170";
    notebook.material = CoverMaterial::kraft;
    notebook.labelStyle = CoverLabelStyle::sticker;
    return notebook;
}

/// Pinned ones first, then the one opened last; a new one counts as opened when it was made, so it starts in front.
bool standsBefore(const Notebook& a, const Notebook& b) {
    const auto key = [](const Notebook& notebook) {
        return std::tuple(notebook.isPinned, notebook.lastOpenedAt.value_or(notebook.createdAt));
    };
    return key(a) > key(b);
}

/// Never empty, whatever another program wrote.
QString coverColor(const Notebook& notebook) {
    const QString color = qmlColor(notebook.colorHex);
    return color.isEmpty() ? qmlColor(Notebook{}.colorHex) : color;
}

QString counted(int count, const QString& one, const QString& many) {
    return QLocale().toString(count) + QLatin1Char(' ') + (count == 1 ? one : many);
}

}  // namespace

void ShelfModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    if (desk_ != nullptr) desk_->disconnect(this);
    desk_ = desk;
    if (desk_ != nullptr) {
        connect(desk_, &Desk::libraryChanged, this, &ShelfModel::refresh);
        connect(desk_, &Desk::cardsChanged, this, &ShelfModel::refresh);
    }
    Q_EMIT deskChanged();
    refresh();
}

// ---- content ----------------------------------------------------------------------------------------------------

ShelfModel::Content ShelfModel::contentNow() const {
    Content content;
    if (desk_ == nullptr) return content;
    const JournalStore& library = desk_->library();
    std::unordered_map<NotebookId, Row> byId;
    for (const Notebook& notebook : library.notebooks()) byId.try_emplace(notebook.id, Row{notebook, 0, 0});
    content.summary.notebooks = static_cast<int>(byId.size());
    content.summary.pages = static_cast<int>(library.entries().size());

    Row loose{looseNotebook(), 0, 0};
    const std::unordered_map<PageId, int>& due = desk_->due();
    for (const JournalEntry& page : library.entries()) {
        const auto waiting = due.find(page.id);
        const int count = waiting == due.end() ? 0 : waiting->second;
        content.summary.due += count;
        const auto home = page.notebookID ? byId.find(*page.notebookID) : byId.end();
        if (page.notebookID && home == byId.end()) continue;
        Row& row = page.notebookID ? home->second : loose;
        ++row.pages;
        row.due += count;
    }
    for (const Flashcard& card : desk_->cards().cards()) {
        if (library.entries().contains(card.pageID)) ++content.summary.cards;
    }

    for (auto& [id, row] : byId) content.rows.push_back(std::move(row));
    std::ranges::sort(content.rows, [](const Row& a, const Row& b) {
        if (standsBefore(a.notebook, b.notebook)) return true;
        return !standsBefore(b.notebook, a.notebook) && a.notebook.id < b.notebook.id;
    });
    if (loose.pages > 0) content.rows.push_back(std::move(loose));
    return content;
}

void ShelfModel::refresh() {
    Content content = contentNow();
    take(std::move(content.rows));
    // The detail of what is due may have changed with the rows alone.
    summary_ = content.summary;
    Q_EMIT summaryChanged();
}

void ShelfModel::dropMissing(const std::vector<Row>& rows) {
    for (int i = static_cast<int>(rows_.size()) - 1; i >= 0; --i) {
        const NotebookId id = rows_[static_cast<std::size_t>(i)].notebook.id;
        if (std::ranges::any_of(rows, [&](const Row& row) { return row.notebook.id == id; })) continue;
        beginRemoveRows({}, i, i);
        rows_.erase(rows_.begin() + i);
        endRemoveRows();
    }
}

void ShelfModel::take(std::vector<Row> rows) {
    dropMissing(rows);
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        Row& row = rows[static_cast<std::size_t>(i)];
        const auto at = rows_.begin() + i;
        const auto present =
            std::find_if(at, rows_.end(), [&](const Row& each) { return each.notebook.id == row.notebook.id; });
        if (present == rows_.end()) {
            beginInsertRows({}, i, i);
            rows_.insert(at, std::move(row));
            endInsertRows();
            continue;
        }
        if (present != at) {
            const int from = static_cast<int>(present - rows_.begin());
            beginMoveRows({}, from, from, {}, i);
            std::rotate(at, present, present + 1);
            endMoveRows();
        }
        if (*at == row) continue;
        *at = std::move(row);
        Q_EMIT dataChanged(index(i), index(i));
    }
}

int ShelfModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ShelfModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    const Notebook& notebook = row.notebook;
    switch (role) {
        case NotebookIdRole: return row.isLoose() ? QString(kLoose) : toQml(notebook.id);
        case Qt::DisplayRole:
        case NameRole: return toQml(notebook.name);
        case SubtitleRole: return toQml(notebook.subtitle.value_or(""));
        case EmojiRole: return toQml(notebook.emoji.value_or(""));
        case ColorRole: return coverColor(notebook);
        case AccentRole: return notebook.accentHex ? qmlColor(*notebook.accentHex) : QString();
        case MaterialRole: return qmlName(notebook.material);
        case PatternRole: return qmlName(notebook.pattern);
        case LabelStyleRole: return qmlName(notebook.labelStyle);
        case BandRole: return notebook.hasBand;
        case RibbonRole: return notebook.hasRibbon;
        case CoverImageRole: return coverImage(notebook);
        case PagesRole: return row.pages;
        case DueRole: return row.due;
        case PinnedRole: return notebook.isPinned;
        case IsLooseRole: return row.isLoose();
        case PagesTextRole: return counted(row.pages, tr("page"), tr("pages"));
        default: return {};
    }
}

QHash<int, QByteArray> ShelfModel::roleNames() const {
    return {{NotebookIdRole, "notebookId"}, {NameRole, "name"},
            {SubtitleRole, "subtitle"},     {EmojiRole, "emoji"},
            {ColorRole, "color"},           {AccentRole, "accent"},
            {MaterialRole, "material"},     {PatternRole, "pattern"},
            {LabelStyleRole, "labelStyle"}, {BandRole, "band"},
            {RibbonRole, "ribbon"},         {CoverImageRole, "coverImage"},
            {PagesRole, "pages"},           {DueRole, "due"},
            {PinnedRole, "pinned"},         {IsLooseRole, "isLoose"},
            {PagesTextRole, "pagesText"}};
}

// ---- sentences --------------------------------------------------------------------------------------------------

QString ShelfModel::summary() const {
    return counted(summary_.notebooks, tr("notebook"), tr("notebooks")) + " · " +
           counted(summary_.pages, tr("page"), tr("pages")) + " · " + counted(summary_.cards, tr("card"), tr("cards"));
}

QString ShelfModel::dueTitle() const { return counted(summary_.due, tr("card is due"), tr("cards are due")); }

QString ShelfModel::dueDetail() const {
    constexpr std::size_t kNamed = 3;
    std::vector<const Row*> waiting;
    for (const Row& row : rows_) {
        if (row.due > 0) waiting.push_back(&row);
    }
    std::ranges::stable_sort(waiting, [](const Row* a, const Row* b) { return a->due > b->due; });
    QStringList parts;
    for (std::size_t i = 0; i < std::min(kNamed, waiting.size()); ++i) {
        parts.append(toQml(waiting[i]->notebook.name).simplified() + ' ' + QLocale().toString(waiting[i]->due));
    }
    const QString named = parts.join(", ");
    if (waiting.size() <= kNamed) return named;
    const auto more = static_cast<int>(waiting.size() - kNamed);
    return tr("%1 and %2 more").arg(named, QLocale().toString(more));
}

// ---- changes ----------------------------------------------------------------------------------------------------

const Notebook* ShelfModel::find(const QString& notebook) const {
    return desk_ == nullptr ? nullptr : desk_->library().notebooks().find(fromQml<NotebookId>(notebook));
}

bool ShelfModel::told(const std::expected<void, Refusal>& done) {
    if (!done) desk_->refuse(done.error());
    return done.has_value();
}

bool ShelfModel::change(const QString& id, const std::function<void(Notebook&)>& apply) {
    if (desk_ == nullptr) return false;
    const Notebook* const present = find(id);
    Notebook notebook = present == nullptr ? Notebook{} : *present;
    if (present != nullptr) apply(notebook);
    return told(desk_->library().updateNotebook(std::move(notebook)));
}

QString ShelfModel::create(const QString& name, const QVariantMap& look) {
    if (desk_ == nullptr) return {};
    Notebook notebook = freshNotebook(summary_.notebooks);
    applyLook(look, notebook);
    if (!applyCoverImage(look, notebook)) return {};
    notebook.name = name.trimmed().toStdString();
    const QString id = toQml(desk_->library().addNotebook(std::move(notebook)));
    refresh();  // whoever made it goes to its row
    return id;
}

bool ShelfModel::rename(const QString& notebook, const QString& name) {
    return change(notebook, [&](Notebook& changed) { changed.name = name.trimmed().toStdString(); });
}

bool ShelfModel::restyle(const QString& notebook, const QVariantMap& look) {
    const Notebook* const present = find(notebook);
    Notebook pictured = present == nullptr ? Notebook{} : *present;
    if (present != nullptr && !applyCoverImage(look, pictured)) return false;
    return change(notebook, [&](Notebook& changed) {
        applyLook(look, changed);
        changed.coverImageFilename = pictured.coverImageFilename;
    });
}

bool ShelfModel::setPinned(const QString& notebook, bool pinned) {
    return change(notebook, [&](Notebook& changed) { changed.isPinned = pinned; });
}

bool ShelfModel::remove(const QString& notebook, bool pagesToTrash) {
    return desk_ != nullptr && told(desk_->library().deleteNotebook(
                                   fromQml<NotebookId>(notebook),
                                   pagesToTrash ? PagesOfNotebook::goToTrash : PagesOfNotebook::becomeLoose));
}

void ShelfModel::noteOpened(const QString& notebook) {
    if (find(notebook) == nullptr) return;  // the loose pages
    change(notebook, [&](Notebook& changed) { changed.lastOpenedAt = desk_->now(); });
}

QVariantMap ShelfModel::lookOf(const QString& notebook) const {
    const Notebook* const present = find(notebook);
    const Notebook shown = present == nullptr ? freshNotebook(summary_.notebooks) : *present;
    QVariantMap look = tessary::lookOf(shown);
    look["coverImage"] = coverImage(shown);
    return look;
}

QString ShelfModel::coverImage(const Notebook& notebook) const {
    if (!notebook.coverImageFilename) return {};
    // A name of another program's file may hold a path; only what lies in the folder is a cover.
    const std::filesystem::path name = std::filesystem::path(*notebook.coverImageFilename).filename();
    return toQml((desk_->library().mediaFolder(MediaKind::cover) / name).string());
}

bool ShelfModel::applyCoverImage(const QVariantMap& look, Notebook& notebook) {
    const QString path = look.value("coverImage", coverImage(notebook)).toString();
    if (path == coverImage(notebook)) return true;
    notebook.coverImageFilename.reset();
    if (path.isEmpty()) return true;
    auto name = desk_->library().addMedia(MediaKind::cover, path.toStdString());
    if (!name) return told(std::unexpected(name.error()));
    notebook.coverImageFilename = std::move(*name);
    return true;
}

int ShelfModel::rowOf(const QString& notebook) const {
    const bool loose = notebook == kLoose;
    const auto id = fromQml<NotebookId>(notebook);
    if (!loose && id == NotebookId{}) return -1;
    const auto found =
        std::ranges::find_if(rows_, [&](const Row& row) { return loose ? row.isLoose() : row.notebook.id == id; });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

}  // namespace tessary
