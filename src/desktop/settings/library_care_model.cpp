#include "desktop/settings/library_care_model.h"

#include <algorithm>

#include "desktop/desk/moments.h"
#include "desktop/settings/amounts.h"
#include "library/library_exchange.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr int kDeepestFolder = 8;  ///< the library's own are two deep

quint64 sizeOfFile(const FileSystem& files, const fs::path& path) {
    const FileResult<FileInfo> info = files.info(path);
    return info && info->kind == FileKind::file ? info->size : 0;
}

quint64 sizeOfFolder(const FileSystem& files, const fs::path& folder, const std::stop_token& stop, int depth = 0) {
    const FileResult<std::vector<DirectoryEntry>> entries = files.list(folder);
    quint64 size = 0;
    if (!entries || depth > kDeepestFolder) return size;
    for (const DirectoryEntry& entry : *entries) {
        if (stop.stop_requested()) return size;
        if (entry.isSymbolicLink) continue;
        if (entry.kind == FileKind::file) size += sizeOfFile(files, folder / entry.name);
        if (entry.kind == FileKind::directory) size += sizeOfFolder(files, folder / entry.name, stop, depth + 1);
    }
    return size;
}

QVariantMap sizeRow(const QString& label, const QString& text) { return {{"label", label}, {"text", text}}; }

}  // namespace

void LibraryCareModel::setDesk(Desk* desk) {
    if (desk == desk_) return;
    measuring_.reset();
    checkJob_.reset();
    desk_ = desk;
    alive_ = std::make_shared<bool>(true);
    look_ = {};
    checking_ = measureAgain_ = false;
    checkResult_.clear();
    findings_.clear();
    Q_EMIT deskChanged();
    Q_EMIT changed();
    Q_EMIT checkChanged();
}

QString LibraryCareModel::folder() const {
    return desk_ == nullptr ? QString() : toQml(desk_->library().folders().base.string());
}

QString LibraryCareModel::backupFolder() const {
    return desk_ == nullptr ? QString() : toQml(autoBackupFolder(desk_->workspace().paths().documents).string());
}

QUrl LibraryCareModel::backupFolderUrl() const {
    if (desk_ == nullptr) return {};
    const fs::path& documents = desk_->workspace().paths().documents;
    return QUrl::fromLocalFile(look_.hasBackupFolder ? backupFolder() : toQml(documents.string()));
}

QVariantList LibraryCareModel::sizes() const {
    if (desk_ == nullptr || !look_.done) return {};
    const auto line = [](const QString& what, quint64 size) { return what + " · " + sizeText(size); };
    return {
        sizeRow(tr("Pages"), line(counted(desk_->library().entries().size(), tr("page"), tr("pages")), look_.pages)),
        sizeRow(tr("Cards"), line(counted(desk_->cards().cards().size(), tr("card"), tr("cards")), look_.cards)),
        sizeRow(tr("Pictures, sound and PDFs"), sizeText(look_.media)),
        sizeRow(tr("Safety copies"), sizeText(look_.backups))};
}

QString LibraryCareModel::totalSize() const {
    return look_.done ? sizeText(look_.pages + look_.cards + look_.media + look_.backups) : QString();
}

QString LibraryCareModel::lastBackup() const {
    if (!look_.backedUp) return {};
    return editedText(*look_.backedUp, desk_->now(), desk_->ports().calendar);
}

// ---- sizes and backups ----

LibraryCareModel::Look LibraryCareModel::lookAt(const LibraryFolders& folders, const fs::path& backups,
                                                const FileSystem& files, const std::stop_token& stop) {
    Look look;
    look.done = true;
    for (const fs::path& file : {folders.entries(), folders.notebooks(), folders.trash(), folders.exams()}) {
        look.pages += sizeOfFile(files, file);
    }
    look.cards = sizeOfFile(files, folders.flashcards()) + sizeOfFolder(files, folders.reviews(), stop);
    for (const fs::path& folder : {folders.images(), folders.audio(), folders.pdfs(), folders.covers()}) {
        look.media += sizeOfFolder(files, folder, stop);
    }
    look.backups = sizeOfFolder(files, folders.backups(), stop);
    const FileResult<std::vector<DirectoryEntry>> kept = files.list(backups);
    look.hasBackupFolder = kept.has_value();
    for (const DirectoryEntry& entry : kept.value_or(std::vector<DirectoryEntry>())) {
        if (!entry.name.starts_with("Tessary-") || !entry.name.ends_with(".json")) continue;
        const FileResult<FileInfo> info = files.info(backups / entry.name);
        if (!info || (look.backedUp && info->modified < *look.backedUp)) continue;
        look.backedUp = info->modified;
        look.backupName = toQml(entry.name);
    }
    return look;
}

void LibraryCareModel::measure() {
    if (desk_ == nullptr) return;
    measureAgain_ = measuring_ != nullptr;
    if (measureAgain_) return;
    const fs::path backups = autoBackupFolder(desk_->workspace().paths().documents);
    measuring_ = std::make_unique<Job>(
        desk_->loop(), [this, backups, folders = desk_->library().folders(), &files = desk_->ports().files](
                           const std::stop_token& stop, const Job::Post& post) {
            post([this, look = lookAt(folders, backups, files, stop)] {
                measuring_.reset();
                look_ = look;
                Q_EMIT changed();
                if (measureAgain_) measure();
            });
        });
}

// ---- check ----

void LibraryCareModel::check() {
    if (desk_ == nullptr || checking_) return;
    checking_ = true;
    Q_EMIT checkChanged();
    desk_->workspace().flushSoon([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) startChecking();
    });
}

void LibraryCareModel::startChecking() {
    SystemPorts& ports = desk_->ports();
    checkJob_ =
        std::make_unique<Job>(desk_->loop(), [this, &ports, now = desk_->now(), folders = desk_->library().folders()](
                                                 const std::stop_token&, const Job::Post& post) {
            const ReadContext reading{.now = now, .freshId = [&ports] { return ports.ids.next(); }};
            post([this, findings = checkLibrary(folders, ports.files, reading)] { checked(findings); });
        });
}

void LibraryCareModel::checked(const std::vector<LibraryFinding>& findings) {
    checkJob_.reset();
    checking_ = false;
    findings_.clear();
    checkProblems_ = 0;
    repairable_ = false;
    for (const LibraryFinding& finding : findings) {
        const bool isProblem = finding.severity == LibraryFinding::Severity::problem;
        checkProblems_ += isProblem ? 1 : 0;
        repairable_ = repairable_ || finding.repairable;
        findings_.append(isProblem ? toQml(finding.text) : tr("Note: %1").arg(toQml(finding.text)));
    }
    const auto problems = static_cast<std::size_t>(checkProblems_);
    checkResult_ = problems == 0 ? tr("The library is in order.")
                                 : counted(problems, tr("problem"), tr("problems")) + " " + tr("found.");
    Q_EMIT checkChanged();
}

}  // namespace tessary
