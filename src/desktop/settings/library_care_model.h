#pragma once

#include <QtCore/QUrl>
#include <QtCore/QVariantList>
#include <memory>

#include "ai/job.h"
#include "app/library_check.h"
#include "desktop/desk/desk.h"

namespace tessary {

/// Where the library lies, how large it is, whether it is in order, and when it was last backed up. The disk is read on
/// threads of their own.
class LibraryCareModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(QString folder READ folder NOTIFY deskChanged)
    Q_PROPERTY(QUrl folderUrl READ folderUrl NOTIFY deskChanged)
    Q_PROPERTY(QString backupFolder READ backupFolder NOTIFY deskChanged)
    /// Of the folder that is there: the backups' own, or the one it will be made in.
    Q_PROPERTY(QUrl backupFolderUrl READ backupFolderUrl NOTIFY changed)

    /// `{ label, text }`: what there is and how much room it takes. Empty until `measure` has come back.
    Q_PROPERTY(QVariantList sizes READ sizes NOTIFY changed)
    Q_PROPERTY(QString totalSize READ totalSize NOTIFY changed)
    /// "3 h ago", and the file's name. Empty when there is none.
    Q_PROPERTY(QString lastBackup READ lastBackup NOTIFY changed)
    Q_PROPERTY(QString lastBackupFile READ lastBackupFile NOTIFY changed)

    Q_PROPERTY(bool checking READ checking NOTIFY checkChanged)
    /// What the last check came to; empty before the first one.
    Q_PROPERTY(QString checkResult READ checkResult NOTIFY checkChanged)
    Q_PROPERTY(int checkProblems READ checkProblems NOTIFY checkChanged)
    /// A sentence for each thing it found; what is no problem begins with "Note".
    Q_PROPERTY(QStringList findings READ findings NOTIFY checkChanged)
    Q_PROPERTY(bool repairable READ repairable NOTIFY checkChanged)

public:
    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QString folder() const;
    [[nodiscard]] QUrl folderUrl() const { return QUrl::fromLocalFile(folder()); }
    [[nodiscard]] QString backupFolder() const;
    [[nodiscard]] QUrl backupFolderUrl() const;
    [[nodiscard]] QVariantList sizes() const;
    [[nodiscard]] QString totalSize() const;
    [[nodiscard]] QString lastBackup() const;
    [[nodiscard]] QString lastBackupFile() const { return look_.backupName; }
    [[nodiscard]] bool checking() const { return checking_; }
    [[nodiscard]] QString checkResult() const { return checkResult_; }
    [[nodiscard]] int checkProblems() const { return checkProblems_; }
    [[nodiscard]] QStringList findings() const { return findings_; }
    [[nodiscard]] bool repairable() const { return repairable_; }

    /// Reads sizes and backups anew.
    Q_INVOKABLE void measure();
    /// Writes what is pending, then reads every file of the library and says what is wrong. Changes nothing.
    Q_INVOKABLE void check();

Q_SIGNALS:
    void deskChanged();
    void changed();
    void checkChanged();

private:
    /// What was seen on the disk, in bytes.
    struct Look {
        bool done = false;
        quint64 pages = 0;
        quint64 cards = 0;
        quint64 media = 0;
        quint64 backups = 0;
        std::optional<Date> backedUp;
        QString backupName;
        bool hasBackupFolder = false;
    };

    static Look lookAt(const LibraryFolders& folders, const std::filesystem::path& backups, const FileSystem& files,
                       const std::stop_token& stop);
    void startChecking();
    void checked(const std::vector<LibraryFinding>& findings);

    Desk* desk_ = nullptr;
    Look look_;
    bool measureAgain_ = false;
    bool checking_ = false;
    QString checkResult_;
    int checkProblems_ = 0;
    QStringList findings_;
    bool repairable_ = false;
    std::shared_ptr<bool> alive_;  ///< of this desk
    std::unique_ptr<Job> measuring_;
    std::unique_ptr<Job> checkJob_;
};

}  // namespace tessary
