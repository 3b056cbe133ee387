#include "desktop/pages/page_attachments.h"

#include <QtCore/QLocale>
#include <QtGui/QDesktopServices>
#include <algorithm>

#include "ai/page_source.h"
#include "app/pdf_file.h"

namespace tessary {

void PageAttachments::setDesk(Desk* desk) {
    if (desk == desk_) return;
    if (desk_ != nullptr) desk_->disconnect(this);
    desk_ = desk;
    if (desk_ != nullptr) connect(desk_, &Desk::libraryChanged, this, &PageAttachments::followLibrary);
    Q_EMIT deskChanged();
    refresh();
}

void PageAttachments::setPageId(const QString& page) {
    const PageId next = fromQml<PageId>(page);
    if (next == page_) return;
    page_ = next;
    Q_EMIT pageIdChanged();
    refresh();
}

const JournalEntry* PageAttachments::page() const {
    return desk_ == nullptr ? nullptr : desk_->library().entries().find(page_);
}

std::vector<PageAttachments::Row> PageAttachments::rowsOf(const JournalEntry& page) {
    std::vector<Row> rows;
    for (const std::string& name : pdfsOf(page)) rows.push_back({.name = name, .kind = Kind::pdf});
    for (const std::string& name : page.imageFilenames) rows.push_back({.name = name, .kind = Kind::image});
    for (const AudioClip& clip : page.audioClips) rows.push_back({.name = clip.filename, .kind = Kind::audio});
    return rows;
}

std::filesystem::path PageAttachments::pathOf(const Row& row) const {
    const MediaKind kind = row.kind == Kind::pdf     ? MediaKind::pdf
                           : row.kind == Kind::image ? MediaKind::image
                                                     : MediaKind::audio;
    // A name of another program's file may hold a path; only what lies in the folder is the page's.
    return desk_->library().mediaFolder(kind) / std::filesystem::path(row.name).filename();
}

/// Typing changes the page all the time, its files hardly ever: the disk is asked when they do.
void PageAttachments::followLibrary() {
    const JournalEntry* const found = page();
    if ((found == nullptr ? std::vector<Row>() : rowsOf(*found)) != rows_) refresh();
}

void PageAttachments::refresh() {
    const JournalEntry* const found = page();
    beginResetModel();
    rows_ = found == nullptr ? std::vector<Row>() : rowsOf(*found);
    files_.clear();
    for (const Row& row : rows_) {
        const auto info = desk_->ports().files.info(pathOf(row));
        const bool isThere = info && info->kind == FileKind::file;
        files_.push_back({isThere ? std::optional(info->size) : std::nullopt});
    }
    endResetModel();
    Q_EMIT refreshed();
}

int PageAttachments::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant PageAttachments::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const auto at = static_cast<std::size_t>(index.row());
    const std::optional<std::uint64_t> size = files_[at].size;
    switch (role) {
        case NameRole: return toQml(rows_[at].name);
        case KindRole: return rows_[at].kind == Kind::pdf ? "pdf" : rows_[at].kind == Kind::image ? "image" : "audio";
        case DetailRole:
            return size ? QLocale::c().formattedDataSize(static_cast<qint64>(*size), 1, QLocale::DataSizeSIFormat)
                        : tr("Missing");
        case MissingRole: return !size;
        default: return {};
    }
}

QHash<int, QByteArray> PageAttachments::roleNames() const {
    return {{NameRole, "name"}, {KindRole, "kind"}, {DetailRole, "detail"}, {MissingRole, "missing"}};
}

void PageAttachments::attach(const QUrl& file) {
    const std::string path = file.toLocalFile().toStdString();
    if (const auto problem = whyNoPdf(desk_->ports().files, path)) return desk_->refuse(*problem);
    const auto name = desk_->library().addMedia(MediaKind::pdf, path);
    if (!name) return desk_->refuse(name.error());
    const JournalEntry* const found = page();
    if (found == nullptr) return;
    const std::vector<std::string> present = pdfsOf(*found);
    if (std::ranges::find(present, *name) != present.end()) return refresh();
    JournalEntry edited = *found;
    edited.pdfAttachments.push_back(*name);
    if (const auto updated = desk_->library().updatePage(std::move(edited)); !updated) desk_->refuse(updated.error());
    refresh();
}

void PageAttachments::open(int row) {
    if (row < 0 || row >= rowCount()) return;
    refresh();
    const auto at = static_cast<std::size_t>(row);
    const QString name = toQml(rows_[at].name);
    if (!files_[at].size)
        return desk_->refuse(tr("“%1” is no longer in the library’s folder.").arg(name).toStdString());
    const QUrl file = QUrl::fromLocalFile(toQml(pathOf(rows_[at]).string()));
    if (!QDesktopServices::openUrl(file))
        desk_->refuse(tr("No program of this computer opens “%1”.").arg(name).toStdString());
}

void PageAttachments::remove(int row) {
    const JournalEntry* const found = page();
    if (found == nullptr || row < 0 || row >= rowCount()) return;
    const Row gone = rows_[static_cast<std::size_t>(row)];
    JournalEntry edited = *found;
    if (gone.kind == Kind::pdf && edited.pdfFilename == gone.name) edited.pdfFilename.reset();
    if (gone.kind == Kind::pdf) std::erase(edited.pdfAttachments, gone.name);
    if (gone.kind == Kind::image) std::erase(edited.imageFilenames, gone.name);
    if (gone.kind == Kind::image) edited.imageStickers.erase(gone.name);
    if (gone.kind == Kind::audio)
        std::erase_if(edited.audioClips, [&](const auto& clip) { return clip.filename == gone.name; });
    const auto before = desk_->library().entries().share(page_);
    if (const auto updated = desk_->library().updatePage(std::move(edited)); !updated)
        return desk_->refuse(updated.error());
    refresh();
    desk_->offerUndo(tr("“%1” taken off the page").arg(toQml(gone.name)), [desk = desk_, before] {
        const JournalEntry* const now = desk->library().entries().find(before->id);
        if (now == nullptr) return;
        JournalEntry back = *now;  // with what was written since
        back.pdfFilename = before->pdfFilename;
        back.pdfAttachments = before->pdfAttachments;
        back.imageFilenames = before->imageFilenames;
        back.imageStickers = before->imageStickers;
        back.audioClips = before->audioClips;
        if (const auto updated = desk->library().updatePage(std::move(back)); !updated) desk->refuse(updated.error());
    });
}

}  // namespace tessary
