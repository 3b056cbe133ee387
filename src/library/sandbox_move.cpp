#include "library/sandbox_move.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "library/library_folders.h"
#include "library/library_json.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kCopyFailure = "Tessary: couldn't copy the journal out of the sandbox: ";
constexpr std::string_view kAsidePrefix = "Notara-before-1.3.2-";

fs::path containerFolder(const fs::path& home) {
    return home / "Library/Containers" / kBundleIdentifier / "Data/Library/Application Support/Notara";
}

struct Extent {
    std::size_t pages = 0;
    std::optional<Date> latestEdit;
};

std::optional<Extent> decodedExtent(const std::string& content, const StoreServices& services) {
    const ReadContext context{.now = services.clock.now(), .freshId = [&ids = services.ids] { return ids.next(); }};
    const auto pages = decodeJson<std::vector<JournalEntry>>(content, context);
    if (!pages) return std::nullopt;
    Extent extent{.pages = pages->size(), .latestEdit = {}};
    for (const JournalEntry& page : *pages) extent.latestEdit = std::max(extent.latestEdit, {lastEdited(page)});
    return extent;
}

/// Absent when the pages cannot be read; a missing or empty file has none.
std::optional<Extent> extentOf(const fs::path& folder, const StoreServices& services) {
    const FileResult<std::string> content = services.files.read(LibraryFolders{folder}.entries());
    if (!content) {
        return content.error().kind == FileError::Kind::notFound ? std::optional(Extent{}) : std::nullopt;
    }
    return trimmed(*content).empty() ? std::optional(Extent{}) : decodedExtent(*content, services);
}

bool isWorthTaking(const std::optional<Extent>& old, const std::optional<Extent>& present) {
    if (!old || old->pages == 0 || !present) return false;
    if (old->pages < present->pages || old->latestEdit < present->latestEdit) return false;
    return old->pages > present->pages || old->latestEdit > present->latestEdit;
}

class Takeover {
public:
    Takeover(fs::path from, fs::path to, const StoreServices& services)
        : from_(std::move(from)), to_(std::move(to)), services_(services), files_(services.files) {}

    /// False when what lies at the new place could not be moved aside; it is left as it was.
    bool run() {
        const FileResult<void> cleared = clearNewPlace();
        if (!cleared) {
            report(cleared.error());
            return false;
        }
        copyFolder(from_, to_);
        return true;
    }

private:
    void report(const FileError& error) const { services_.console.print(std::string(kCopyFailure) + error.message); }

    [[nodiscard]] fs::path asideFolder() const {
        const std::string stamp = timeStamp(services_.calendar.civilTime(services_.clock.now()));
        const std::string name = std::string(kAsidePrefix) + stamp;
        fs::path folder = to_.parent_path() / name;
        for (int number = 2; exists(files_, folder); ++number) {
            folder = to_.parent_path() / (name + "-" + std::to_string(number));
        }
        return folder;
    }

    FileResult<void> clearNewPlace() {
        if (FileResult<void> made = files_.createFolders(to_); !made) return made;
        FileResult<std::vector<DirectoryEntry>> children = files_.list(to_);
        if (!children) return std::unexpected(children.error());
        std::erase_if(*children, [](const DirectoryEntry& child) { return child.name == kLockFileName; });
        if (children->empty()) return {};
        return moveAside(*children, asideFolder());
    }

    FileResult<void> moveAside(const std::vector<DirectoryEntry>& children, const fs::path& aside) {
        if (FileResult<void> made = files_.createFolders(aside); !made) return made;
        for (std::size_t i = 0; i < children.size(); ++i) {
            const FileResult<void> moved = files_.rename(to_ / children[i].name, aside / children[i].name);
            if (moved) continue;
            moveBack(children, i, aside);
            return moved;
        }
        if (FileResult<void> synced = files_.syncFolder(aside); !synced) report(synced.error());
        if (FileResult<void> synced = files_.syncFolder(to_); !synced) report(synced.error());
        return {};
    }

    void moveBack(const std::vector<DirectoryEntry>& children, std::size_t count, const fs::path& aside) {
        for (std::size_t i = 0; i < count; ++i) {
            const FileResult<void> moved = files_.rename(aside / children[i].name, to_ / children[i].name);
            if (!moved) report(moved.error());
        }
        const FileResult<void> removed = files_.remove(aside);
        static_cast<void>(removed);  // an empty folder that stays does no harm
    }

    /// Copies all that it can: one file that cannot be copied must not cost the others.
    void copyFolder(const fs::path& from, const fs::path& to) {
        const FileResult<std::vector<DirectoryEntry>> children = files_.list(from);
        if (!children) return report(children.error());
        if (const FileResult<void> made = files_.createFolders(to); !made) return report(made.error());
        for (const DirectoryEntry& child : *children) {
            if (child.name != kLockFileName) copyChild(child, from, to);
        }
    }

    void copyChild(const DirectoryEntry& child, const fs::path& from, const fs::path& to) {
        if (child.kind == FileKind::directory) {
            // A linked folder may lead back to where it lies.
            if (!child.isSymbolicLink) copyFolder(from / child.name, to / child.name);
        } else if (child.kind == FileKind::file) {
            const FileResult<void> copied = copyFile(files_, from / child.name, to / child.name);
            if (!copied) report(copied.error());
        }
    }

    fs::path from_;
    fs::path to_;
    const StoreServices& services_;
    FileSystem& files_;
};

}  // namespace

void leaveSandbox(const SandboxMove& move, const StoreServices& services) {
    if (move.stillSandboxed || services.settings.boolean(kLeftSandboxKey).value_or(false)) return;
    const fs::path old = containerFolder(move.homeFolder);
    if (isWorthTaking(extentOf(old, services), extentOf(move.libraryFolder, services))) {
        if (!Takeover(old, move.libraryFolder, services).run()) return;
    }
    if (const Settings::Stored stored = services.settings.setBoolean(kLeftSandboxKey, true); !stored) {
        services.console.print("Tessary: couldn't note that the sandbox was left: " + stored.error());
    }
}

}  // namespace tessary
