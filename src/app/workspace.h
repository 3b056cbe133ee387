#pragma once

#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/app_paths.h"
#include "library/journal_store.h"
#include "platform/text_services.h"
#include "study/flashcard_store.h"

namespace tessary {

/// What a program gives its workspace. All of it outlives the workspace.
struct WorkspacePorts {
    FileSystem& files;
    MainLoop& loop;
    Clock& clock;
    const LocalCalendar& calendar;
    IdSource& ids;
    Settings& settings;
    Console& console;
    std::function<std::unique_ptr<SerialQueue>(std::string name)> makeQueue;
    bool stillSandboxed = false;  ///< the system says that the program runs in a sandbox
};

/// What the program is going to do with the library.
enum class WorkspaceUse {
    read,    ///< works too when another program holds the library, or its disk is read-only; then nothing is written
    change,  ///< needs the library's lock
};

/// Makes the library's folder and locks it against other programs. The error is for the user and says who holds it.
[[nodiscard]] std::expected<std::unique_ptr<FolderLock>, std::string> lockLibrary(FileSystem& files,
                                                                                  const LibraryFolders& folders);

/// One opened library: the stores, wired to the system and to each other. Main thread only.
class Workspace {
public:
    /// Locks the library, takes it over from a sandbox if there is one, and loads the stores. The error is for the
    /// user.
    static std::expected<std::unique_ptr<Workspace>, std::string> open(AppPaths paths, const WorkspacePorts& ports,
                                                                       WorkspaceUse use);
    /// Writes what is pending. Call `close` before, to learn of failures.
    ~Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    [[nodiscard]] JournalStore& library() { return *library_; }
    [[nodiscard]] FlashcardStore& cards() { return *cards_; }
    [[nodiscard]] const ReviewLog& reviewLog() const { return *reviewLog_; }
    [[nodiscard]] const StoreServices& services() const { return services_; }
    [[nodiscard]] const AppPaths& paths() const { return paths_; }
    [[nodiscard]] StoreAccess access() const { return access_; }

    /// One line for each file that could not be read.
    [[nodiscard]] std::vector<std::string> loadProblems() const;

    /// Writes everything pending and waits for it. The error names what could not be written, for the user.
    std::expected<void, std::string> flush();
    /// Writes everything pending meanwhile; `done` runs from the main loop after it, not any more once the workspace is
    /// gone.
    void flushSoon(std::move_only_function<void()> done);
    /// `flush`, and the automatic backup when it is switched on.
    std::expected<void, std::string> close();

private:
    Workspace(AppPaths paths, const WorkspacePorts& ports, StoreAccess access, std::unique_ptr<FolderLock> lock);

    AppPaths paths_;
    StoreAccess access_;
    std::unique_ptr<FolderLock> lock_;  // before the stores: given back after the last write
    NotificationCenter notifications_;
    StoreServices services_;
    std::unique_ptr<SerialQueue> libraryQueue_;
    std::unique_ptr<SerialQueue> cardsQueue_;
    std::unique_ptr<JournalStore> library_;
    std::unique_ptr<ReviewLog> reviewLog_;
    std::unique_ptr<FlashcardStore> cards_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tessary
