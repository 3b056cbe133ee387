#include "desktop/search/command_palette.h"

#include <algorithm>
#include <unordered_map>

#include "base/text.h"
#include "desktop/search/fuzzy_match.h"
#include "desktop/search/page_labels.h"

namespace tessary {
namespace {

constexpr std::size_t kRecent = 6;
constexpr std::size_t kMostRows = 40;
constexpr int kCommandsFirst = 2;  // points more than a page of the same name
constexpr int kKeyword = 3;        // points for each letter

std::u32string withoutBlanks(std::u32string text) {
    std::erase(text, U' ');
    return text;
}

}  // namespace

void CommandPalette::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    Q_EMIT deskChanged();
}

void CommandPalette::setQuery(const QString& query) {
    if (query == query_) return;
    query_ = query;
    Q_EMIT queryChanged();
    refresh();
}

void CommandPalette::open() {
    places_.clear();
    std::unordered_map<NotebookId, Date> lastEdits;
    for (const JournalEntry& page : desk_->library().entries()) {
        const Date edited = lastEdited(page);
        places_.push_back({page.id, folded(page.title), edited});
        if (page.notebookID) lastEdits[*page.notebookID] = std::max(lastEdits[*page.notebookID], edited);
    }
    for (const Notebook& notebook : desk_->library().notebooks())
        places_.push_back({notebook.id, folded(notebook.name), lastEdits[notebook.id]});
    std::ranges::stable_sort(places_, std::ranges::greater{}, &Place::lastEdited);
    query_.clear();
    Q_EMIT queryChanged();
    refresh();
}

void CommandPalette::refresh() {
    if (desk_ == nullptr) return;
    beginResetModel();
    rows_ = rowsNow();
    endResetModel();
}

std::u32string CommandPalette::folded(std::string_view text) const {
    return codePoints(searchFolded(text, desk_->ports().text));
}

std::u32string CommandPalette::typed() const { return folded(query_.simplified().toStdString()); }

std::vector<CommandPalette::Row> CommandPalette::rowsNow() const {
    const std::u32string words = typed();
    return words.empty() ? restingRows() : matchingRows(words);
}

std::vector<CommandPalette::Row> CommandPalette::restingRows() const {
    std::vector<Row> rows;
    for (const Place& place : places_) {
        if (rows.size() == kRecent) break;
        std::visit([&](const auto& id) { rows.push_back({id, 0}); }, place.id);
    }
    for (Command* const command : commands_) {
        if (command->isOffered()) rows.push_back({command, 0});
    }
    return rows;
}

std::optional<int> CommandPalette::scoreOf(const Command& command, const std::u32string& typed) const {
    if (const auto score = fuzzyScore(withoutBlanks(typed), folded(command.title().toStdString())))
        return *score + kCommandsFirst;
    const std::u32string keywords = U' ' + folded(command.keywords().toStdString());
    if (keywords.find(U' ' + typed) == std::u32string::npos) return std::nullopt;
    return kKeyword * static_cast<int>(typed.size());
}

std::vector<CommandPalette::Row> CommandPalette::matchingRows(const std::u32string& typed) const {
    std::vector<Row> rows;
    for (Command* const command : commands_) {
        const auto score = command->isOffered() ? scoreOf(*command, typed) : std::nullopt;
        if (score) rows.push_back({command, *score});
    }
    const std::u32string letters = withoutBlanks(typed);
    for (const Place& place : places_) {
        const auto score = fuzzyScore(letters, place.folded);
        if (score) std::visit([&](const auto& id) { rows.push_back({id, *score}); }, place.id);
    }
    std::ranges::stable_sort(rows, std::ranges::greater{}, &Row::score);
    if (rows.size() > kMostRows) rows.resize(kMostRows);
    return rows;
}

std::string CommandPalette::titleOfRow(const Row& row) const {
    if (const auto* const command = std::get_if<Command*>(&row.target)) return (*command)->title().toStdString();
    if (const auto* const id = std::get_if<NotebookId>(&row.target)) {
        const Notebook* const notebook = desk_->library().notebooks().find(*id);
        return notebook == nullptr ? std::string() : notebook->name;
    }
    const JournalEntry* const page = desk_->library().entries().find(std::get<PageId>(row.target));
    return page == nullptr ? std::string() : titleOf(*page).toStdString();
}

int CommandPalette::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant CommandPalette::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    const auto* const command = std::get_if<Command*>(&row.target);
    const auto* const pageId = std::get_if<PageId>(&row.target);
    const auto* const notebookId = std::get_if<NotebookId>(&row.target);
    const JournalEntry* const page = pageId == nullptr ? nullptr : desk_->library().entries().find(*pageId);
    const Notebook* const notebook = notebookId == nullptr ? nullptr : desk_->library().notebooks().find(*notebookId);
    switch (role) {
        case TitleRole: return toQml(titleOfRow(row));
        case MarksRole: return marksOf(row);
        case DetailRole:
            if (notebookId != nullptr) return tr("Notebook");
            return page == nullptr ? QString() : pathOf(*page, desk_->library());
        case IconRole: return command != nullptr ? (*command)->iconName() : pageId != nullptr ? "page" : "";
        case ColorRole:
            if (notebook != nullptr) return "#" + toQml(notebook->colorHex);
            return page == nullptr ? QString() : colorOf(*page, desk_->library());
        case KeyTextRole: return command != nullptr ? (*command)->keyText() : "";
        case SectionRole:
            if (!query_.trimmed().isEmpty()) return QString();
            return command != nullptr ? tr("Commands") : tr("Recent");
        default: return {};
    }
}

QHash<int, QByteArray> CommandPalette::roleNames() const {
    return {{TitleRole, "title"}, {MarksRole, "marks"},     {DetailRole, "detail"},  {IconRole, "iconName"},
            {ColorRole, "color"}, {KeyTextRole, "keyText"}, {SectionRole, "section"}};
}

QVariantList CommandPalette::marksOf(const Row& row) const {
    const TextServices& text = desk_->ports().text;
    const std::string title = titleOfRow(row);
    const std::u32string foldedTitle = folded(title);
    std::vector<TextSpan> spans;
    for (const std::size_t at : fuzzyPositions(withoutBlanks(typed()), foldedTitle)) {
        std::string before;
        for (const char32_t c : std::u32string_view(foldedTitle).substr(0, at)) appendUtf8(before, c);
        const std::size_t start = originalOffset(title, before.size(), text);
        const std::size_t length = text.prefix(std::string_view(title).substr(start), 1).size();
        if (!spans.empty() && spans.back().start + spans.back().length >= start) {
            spans.back().length = start + length - spans.back().start;
        } else {
            spans.push_back({.start = start, .length = length});
        }
    }
    return toQml(spans, title);
}

void CommandPalette::run(int row) {
    if (row < 0 || row >= rowCount()) return;
    const auto target = rows_[static_cast<std::size_t>(row)].target;
    if (const auto* const command = std::get_if<Command*>(&target)) return (*command)->trigger();
    if (const auto* const notebook = std::get_if<NotebookId>(&target)) return Q_EMIT notebookChosen(toQml(*notebook));
    const PageId page = std::get<PageId>(target);
    const JournalEntry* const found = desk_->library().entries().find(page);
    if (found != nullptr) Q_EMIT pageChosen(placeOf(*found), toQml(page));
}

}  // namespace tessary
