#include "app/workspace.h"

#include <atomic>

#include "base/text.h"
#include "library/library_exchange.h"
#include "library/sandbox_move.h"

namespace tessary {
namespace {

constexpr const char* kLibraryQueue = "com.vorlek.Notara.save";
constexpr const char* kCardsQueue = "com.vorlek.Notara.flashcards.save";

std::string describe(const LockFailure& failure) {
    if (!failure.heldByOther) return "The library can't be opened for writing: " + failure.message;
    const std::string holder = failure.holder > 0 ? " (process " + std::to_string(failure.holder) + ")" : "";
    return "Another program" + holder + " has this library open. Close it there and try again.";
}

}  // namespace

std::expected<std::unique_ptr<FolderLock>, std::string> lockLibrary(FileSystem& files, const LibraryFolders& folders) {
    if (const FileResult<void> created = files.createFolders(folders.base); !created) {
        return std::unexpected("The library's folder could not be made: " + created.error().message);
    }
    std::expected<std::unique_ptr<FolderLock>, LockFailure> lock = files.lock(folders.base);
    if (!lock) return std::unexpected(describe(lock.error()));
    return std::move(*lock);
}

std::expected<std::unique_ptr<Workspace>, std::string> Workspace::open(AppPaths paths, const WorkspacePorts& ports,
                                                                       WorkspaceUse use) {
    std::expected<std::unique_ptr<FolderLock>, std::string> lock = lockLibrary(ports.files, paths.library);
    if (!lock && use == WorkspaceUse::change) return std::unexpected(lock.error());
    const StoreAccess access = lock ? StoreAccess::readWrite : StoreAccess::readOnly;
    return std::unique_ptr<Workspace>(
        new Workspace(std::move(paths), ports, access, lock ? std::move(*lock) : nullptr));
}

Workspace::Workspace(AppPaths paths, const WorkspacePorts& ports, StoreAccess access, std::unique_ptr<FolderLock> lock)
    : paths_(std::move(paths)),
      access_(access),
      lock_(std::move(lock)),
      services_{ports.files, ports.loop,     ports.clock,   ports.calendar,
                ports.ids,   ports.settings, ports.console, notifications_},
      libraryQueue_(ports.makeQueue(kLibraryQueue)),
      cardsQueue_(ports.makeQueue(kCardsQueue)) {
    if (access_ == StoreAccess::readWrite) {
        leaveSandbox(
            {.stillSandboxed = ports.stillSandboxed, .homeFolder = paths_.home, .libraryFolder = paths_.library.base},
            services_);
    }
    library_ = std::make_unique<JournalStore>(paths_.library, services_, *libraryQueue_, access_);
    reviewLog_ = std::make_unique<ReviewLog>(paths_.library.reviews(), services_, *cardsQueue_);
    cards_ =
        std::make_unique<FlashcardStore>(paths_.library.flashcards(), services_, *cardsQueue_, *reviewLog_, access_);
}

Workspace::~Workspace() = default;

std::vector<std::string> Workspace::loadProblems() const {
    std::vector<std::string> problems = library_->loadProblems();
    if (!cards_->loadProblem().empty()) problems.push_back(cards_->loadProblem());
    return problems;
}

std::expected<void, std::string> Workspace::flush() {
    if (access_ == StoreAccess::readOnly) return {};
    notifications_.post(kNtoFlushStore);
    std::vector<std::string> failures;
    if (const auto written = library_->flushAndWait(); !written) failures.push_back(written.error());
    if (const auto written = cards_->flushAndWait(); !written) failures.push_back(written.error());
    if (failures.empty()) return {};
    return std::unexpected("Not everything could be saved. " + joined(failures, " "));
}

void Workspace::flushSoon(std::move_only_function<void()> done) {
    notifications_.post(kNtoFlushStore);
    // Whichever queue comes to its end last goes back to the main thread.
    const auto both = std::make_shared<std::atomic<int>>(2);
    const auto task = std::make_shared<std::move_only_function<void()>>(std::move(done));
    for (SerialQueue* const queue : {libraryQueue_.get(), cardsQueue_.get()}) {
        queue->post([both, task, &loop = services_.loop, alive = std::weak_ptr(alive_)] {
            if (both->fetch_sub(1) != 1) return;
            loop.post([task, alive] {
                if (!alive.expired()) (*task)();
            });
        });
    }
}

std::expected<void, std::string> Workspace::close() {
    if (access_ == StoreAccess::readOnly) return {};
    std::expected<void, std::string> flushed = flush();
    if (!services_.settings.boolean("autoBackup").value_or(false)) return flushed;
    const auto backedUp = writeAutoBackup(*library_, paths_.documents, services_);
    if (backedUp) return flushed;
    return std::unexpected(flushed ? backedUp.error() : flushed.error() + " " + backedUp.error());
}

}  // namespace tessary
