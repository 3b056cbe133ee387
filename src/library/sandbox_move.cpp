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
constexpr std::string_view kArrivalFolder = "Notara-arriving";  // left by a failure; the next start writes over it

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

/// Absent when the pages cannot be decoded; a missing or empty file has none.
FileResult<std::optional<Extent>> extentOf(const fs::path& folder, const StoreServices& services) {
    const FileResult<std::string> content = services.files.read(LibraryFolders{folder}.entries());
    if (!content) {
        if (content.error().kind != FileError::Kind::notFound) return std::unexpected(content.error());
        return Extent{};
    }
    return trimmed(*content).empty() ? std::optional(Extent{}) : decodedExtent(*content, services);
}

bool isWorthTaking(const std::optional<Extent>& old, const std::optional<Extent>& present) {
    if (!old || old->pages == 0 || !present) return false;
    if (old->pages < present->pages || old->latestEdit < present->latestEdit) return false;
    return old->pages > present->pages || old->latestEdit > present->latestEdit;
}

FileResult<bool> isWorthTaking(const SandboxMove& move, const fs::path& from, const StoreServices& services) {
    const FileResult<std::optional<Extent>> old = extentOf(from, services);
    if (!old) return std::unexpected(old.error());
    if (!*old || (*old)->pages == 0) return false;
    const FileResult<std::optional<Extent>> present = extentOf(move.libraryFolder, services);
    if (!present) return std::unexpected(present.error());
    return isWorthTaking(*old, *present);
}

void reportTo(Console& console, const FileError& error) { console.print(std::string(kCopyFailure) + error.message); }

class Takeover {
public:
    Takeover(fs::path from, fs::path to, const StoreServices& services)
        : from_(std::move(from)),
          to_(std::move(to)),
          arrival_(to_.parent_path() / kArrivalFolder),
          services_(services),
          files_(services.files) {}

    /// On failure the new place is as it was.
    FileResult<void> run() {
        FileResult<void> result = copyFile(pagesOf(from_), pagesOf(arrival_));
        if (result) {
            copyFolder(from_, arrival_);
            result = exchange();
        }
        removeIfEmpty(arrival_);
        return result;
    }

private:
    static fs::path pagesOf(const fs::path& folder) { return LibraryFolders{folder}.entries(); }

    void report(const FileError& error) const { reportTo(services_.console, error); }

    [[nodiscard]] fs::path asideFolder() const {
        const std::string stamp = timeStamp(services_.calendar.civilTime(services_.clock.now()));
        const std::string name = std::string(kAsidePrefix) + stamp;
        fs::path folder = to_.parent_path() / name;
        for (int number = 2; exists(files_, folder); ++number) {
            folder = to_.parent_path() / (name + "-" + std::to_string(number));
        }
        return folder;
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
        const fs::path path = from / child.name;
        if (child.kind == FileKind::directory) {
            // A linked folder may lead back to where it lies.
            if (!child.isSymbolicLink) copyFolder(path, to / child.name);
        } else if (child.kind == FileKind::file && path != pagesOf(from_)) {
            if (const FileResult<void> copied = copyFile(path, to / child.name); !copied) report(copied.error());
        }
    }

    /// Writes over what an earlier try has left.
    FileResult<void> copyFile(const fs::path& from, const fs::path& to) {
        const FileResult<std::string> content = files_.read(from);
        if (!content) return std::unexpected(content.error());
        if (FileResult<void> made = files_.createFolders(to.parent_path()); !made) return made;
        return writeAtomically(files_, to, *content);
    }

    FileResult<void> exchange() {
        if (FileResult<void> made = files_.createFolders(to_); !made) return made;
        const fs::path aside = asideFolder();
        FileResult<void> moved = moveChildren(to_, aside);
        if (moved) {
            moved = moveChildren(arrival_, to_);
            if (!moved && exists(files_, aside)) {
                if (const FileResult<void> back = moveChildren(aside, to_); !back) report(back.error());
            }
        }
        removeIfEmpty(aside);
        return moved;
    }

    /// All or, as far as that can be undone, nothing. The pages go last, so that a library with pages is whole.
    FileResult<void> moveChildren(const fs::path& from, const fs::path& to) {
        FileResult<std::vector<DirectoryEntry>> children = files_.list(from);
        if (!children) return std::unexpected(children.error());
        std::erase_if(*children, [](const DirectoryEntry& child) { return child.name == kLockFileName; });
        if (children->empty()) return {};
        std::ranges::stable_partition(*children, [&](const auto& child) { return from / child.name != pagesOf(from); });
        if (FileResult<void> made = files_.createFolders(to); !made) return made;
        for (std::size_t i = 0; i < children->size(); ++i) {
            const fs::path name = (*children)[i].name;
            const FileResult<void> moved = files_.rename(from / name, to / name);
            if (moved) continue;
            children->resize(i);
            moveBack(*children, from, to);
            return moved;
        }
        if (FileResult<void> synced = files_.syncFolder(to); !synced) report(synced.error());
        if (FileResult<void> synced = files_.syncFolder(from); !synced) report(synced.error());
        return {};
    }

    void moveBack(const std::vector<DirectoryEntry>& children, const fs::path& from, const fs::path& to) {
        for (const DirectoryEntry& child : children) {
            const FileResult<void> moved = files_.rename(to / child.name, from / child.name);
            if (!moved) report(moved.error());
        }
    }

    void removeIfEmpty(const fs::path& folder) {
        const FileResult<void> removed = files_.remove(folder);
        static_cast<void>(removed);  // what still holds something stays, and an empty folder that stays does no harm
    }

    fs::path from_;
    fs::path to_;
    fs::path arrival_;
    const StoreServices& services_;
    FileSystem& files_;
};

}  // namespace

void leaveSandbox(const SandboxMove& move, const StoreServices& services) {
    if (move.stillSandboxed || services.settings.boolean(kLeftSandboxKey).value_or(false)) return;
    const fs::path old = containerFolder(move.homeFolder);
    const FileResult<bool> worthTaking = isWorthTaking(move, old, services);
    if (!worthTaking) return reportTo(services.console, worthTaking.error());
    if (*worthTaking) {
        const FileResult<void> taken = Takeover(old, move.libraryFolder, services).run();
        if (!taken) return reportTo(services.console, taken.error());
    }
    if (const Settings::Stored stored = services.settings.setBoolean(kLeftSandboxKey, true); !stored) {
        services.console.print("Tessary: couldn't note that the sandbox was left: " + stored.error());
    }
}

}  // namespace tessary
