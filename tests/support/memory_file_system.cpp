#include "support/memory_file_system.h"

#include <limits>
#include <map>
#include <mutex>
#include <set>
#include <utility>

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSpareCapacity = 64;
constexpr int kOwnProcess = 4711;

struct Node {
    using Names = std::map<std::string, std::shared_ptr<Node>>;

    FileKind kind = FileKind::file;
    Date modified;
    std::string content;
    std::string durableContent;
    Names names;
    Names durableNames;
};

using NodePointer = std::shared_ptr<Node>;

std::unexpected<FileError> failure(FileError::Kind kind, const fs::path& path, std::string_view reason) {
    return std::unexpected(FileError{kind, path.string() + ": " + std::string(reason)});
}

std::unexpected<FileError> missing(const fs::path& path) {
    return failure(FileError::Kind::notFound, path, "nothing lies here");
}

fs::path normalized(const fs::path& path) {
    const fs::path result = (fs::path("/") / path).lexically_normal();
    return result.has_filename() ? result : result.parent_path();
}

void revert(Node& node, MemoryFileSystem::UnsyncedNames names) {
    node.content = node.durableContent;
    if (names == MemoryFileSystem::UnsyncedNames::lost) node.names = node.durableNames;
    node.durableNames = node.names;
    for (const auto& [name, child] : node.names) revert(*child, names);
}

}  // namespace

class MemoryFileSystem::State {
public:
    State() { root_->kind = FileKind::directory; }

    [[nodiscard]] NodePointer find(const fs::path& path) const {
        NodePointer node = root_;
        for (const fs::path& part : normalized(path).relative_path()) {
            const auto found = node->names.find(part.string());
            if (found == node->names.end()) return nullptr;
            node = found->second;
        }
        return node;
    }

    [[nodiscard]] NodePointer findFolder(const fs::path& path) const {
        NodePointer node = find(path);
        return node && node->kind == FileKind::directory ? node : nullptr;
    }

    /// Counts a mutating step and tells whether it fails.
    FileResult<void> step(const fs::path& path, bool needsSpace = true) {
        ++steps;
        if (steps < firstFailing) return {};
        if (!needsSpace && failureKind == FileError::Kind::noSpace) return {};
        return failure(failureKind, path, "made to fail");
    }

    FileResult<void> write(Node& node, const fs::path& path, std::string_view data) {
        const FileResult<void> allowed = step(path);
        node.content.append(allowed ? data : data.substr(0, data.size() / 2));
        touch(node);
        return allowed;
    }

    FileResult<void> sync(Node& node, const fs::path& path) {
        if (FileResult<void> allowed = step(path); !allowed) return allowed;
        node.durableContent = node.content;
        return {};
    }

    FileResult<void> syncFolder(const fs::path& path) {
        if (FileResult<void> allowed = step(path); !allowed) return allowed;
        const NodePointer folder = findFolder(path);
        if (!folder) return missing(path);
        folder->durableNames = folder->names;
        return {};
    }

    FileResult<NodePointer> make(const fs::path& path, FileKind kind) {
        if (FileResult<void> allowed = step(path); !allowed) return std::unexpected(allowed.error());
        const NodePointer parent = findFolder(path.parent_path());
        if (!parent) return missing(path);
        const auto [place, isNew] = parent->names.try_emplace(path.filename().string());
        if (!isNew) return failure(FileError::Kind::alreadyExists, path, "something lies here");
        place->second = std::make_shared<Node>();
        place->second->kind = kind;
        touch(*place->second);
        return place->second;
    }

    FileResult<void> makeFolders(const fs::path& path) {
        const NodePointer present = find(path);
        if (present && present->kind == FileKind::directory) return {};
        if (present) return failure(FileError::Kind::alreadyExists, path, "is no folder");
        if (FileResult<void> made = makeFolders(path.parent_path()); !made) return made;
        if (const FileResult<NodePointer> made = make(path, FileKind::directory); !made) {
            return std::unexpected(made.error());
        }
        return syncFolder(path.parent_path());
    }

    void crash(UnsyncedNames names) {
        revert(*root_, names);
        firstFailing = std::numeric_limits<int>::max();
        locked.clear();
        ++crashes;
    }

    mutable std::mutex mutex;
    std::set<fs::path> locked;
    FileError::Kind failureKind = FileError::Kind::other;
    int firstFailing = std::numeric_limits<int>::max();
    int steps = 0;
    int crashes = 0;

private:
    /// Every change is a second after the one before.
    void touch(Node& node) {
        time_ = time_ + 1;
        node.modified = time_;
    }

    NodePointer root_ = std::make_shared<Node>();
    Date time_;
};

class MemoryFileSystem::OpenFile final : public WritableFile {
public:
    OpenFile(std::shared_ptr<State> state, NodePointer node, fs::path path)
        : state_(std::move(state)), node_(std::move(node)), path_(std::move(path)), crashes_(state_->crashes) {}

    FileResult<void> write(std::string_view data) override {
        const std::scoped_lock guard(state_->mutex);
        return isLost() ? lost() : state_->write(*node_, path_, data);
    }
    FileResult<void> sync() override {
        const std::scoped_lock guard(state_->mutex);
        return isLost() ? lost() : state_->sync(*node_, path_);
    }

private:
    [[nodiscard]] bool isLost() const { return crashes_ != state_->crashes; }
    [[nodiscard]] FileResult<void> lost() const {
        return failure(FileError::Kind::other, path_, "was open when the computer stopped");
    }

    std::shared_ptr<State> state_;
    NodePointer node_;
    fs::path path_;
    int crashes_;
};

class MemoryFileSystem::Lock final : public FolderLock {
public:
    Lock(std::shared_ptr<State> state, fs::path folder)
        : state_(std::move(state)), folder_(std::move(folder)), crashes_(state_->crashes) {}
    ~Lock() override {
        const std::scoped_lock guard(state_->mutex);
        if (crashes_ == state_->crashes) state_->locked.erase(folder_);
    }

private:
    std::shared_ptr<State> state_;
    fs::path folder_;
    int crashes_;
};

MemoryFileSystem::MemoryFileSystem() : state_(std::make_shared<State>()) {}

MemoryFileSystem::~MemoryFileSystem() = default;

void MemoryFileSystem::crash(UnsyncedNames names) {
    const std::scoped_lock guard(state_->mutex);
    state_->crash(names);
}

void MemoryFileSystem::failAfter(int step, FileError::Kind kind) {
    const std::scoped_lock guard(state_->mutex);
    state_->firstFailing = state_->steps + step;
    state_->failureKind = kind;
}

void MemoryFileSystem::stopFailing() {
    const std::scoped_lock guard(state_->mutex);
    state_->firstFailing = std::numeric_limits<int>::max();
}

int MemoryFileSystem::steps() const {
    const std::scoped_lock guard(state_->mutex);
    return state_->steps;
}

FileResult<std::string> MemoryFileSystem::read(const fs::path& path) const {
    const std::scoped_lock guard(state_->mutex);
    const NodePointer node = state_->find(path);
    if (!node) return missing(path);
    if (node->kind != FileKind::file) return failure(FileError::Kind::other, path, "is a folder");
    std::string content;
    content.reserve(node->content.size() + kSpareCapacity);
    content = node->content;
    return content;
}

FileResult<FileInfo> MemoryFileSystem::info(const fs::path& path) const {
    const std::scoped_lock guard(state_->mutex);
    const NodePointer node = state_->find(path);
    if (!node) return missing(path);
    return FileInfo{.kind = node->kind, .size = node->content.size(), .modified = node->modified};
}

FileResult<std::vector<DirectoryEntry>> MemoryFileSystem::list(const fs::path& folder) const {
    const std::scoped_lock guard(state_->mutex);
    const NodePointer node = state_->findFolder(folder);
    if (!node) return missing(folder);
    std::vector<DirectoryEntry> entries;
    for (const auto& [name, child] : node->names) entries.push_back({.name = name, .kind = child->kind});
    return entries;
}

fs::path MemoryFileSystem::resolved(const fs::path& path) const { return normalized(path); }

FileResult<void> MemoryFileSystem::createFolders(const fs::path& folder) {
    const std::scoped_lock guard(state_->mutex);
    return state_->makeFolders(normalized(folder));
}

FileResult<std::unique_ptr<WritableFile>> MemoryFileSystem::create(const fs::path& path, const fs::path& like) {
    static_cast<void>(like);
    const std::scoped_lock guard(state_->mutex);
    FileResult<NodePointer> node = state_->make(normalized(path), FileKind::file);
    if (!node) return std::unexpected(node.error());
    return std::make_unique<OpenFile>(state_, std::move(*node), path);
}

FileResult<void> MemoryFileSystem::rename(const fs::path& from, const fs::path& to) {
    const std::scoped_lock guard(state_->mutex);
    if (FileResult<void> allowed = state_->step(from); !allowed) return allowed;
    const fs::path source = normalized(from);
    const fs::path target = normalized(to);
    const NodePointer node = state_->find(source);
    const NodePointer folder = state_->findFolder(target.parent_path());
    if (!node || !folder) return missing(from);
    const NodePointer present = state_->find(target);
    if (present && (present->kind != node->kind || !present->names.empty())) {
        return failure(FileError::Kind::other, from, "cannot replace what lies there");
    }
    if (present == node) return {};
    folder->names[target.filename().string()] = node;
    state_->find(source.parent_path())->names.erase(source.filename().string());
    return {};
}

FileResult<void> MemoryFileSystem::remove(const fs::path& path) {
    const std::scoped_lock guard(state_->mutex);
    if (FileResult<void> allowed = state_->step(path, false); !allowed) return allowed;
    const fs::path target = normalized(path);
    const NodePointer node = state_->find(target);
    if (!node) return missing(path);
    if (!node->names.empty()) return failure(FileError::Kind::other, path, "is not empty");
    state_->find(target.parent_path())->names.erase(target.filename().string());
    return {};
}

FileResult<void> MemoryFileSystem::syncFolder(const fs::path& folder) {
    const std::scoped_lock guard(state_->mutex);
    return state_->syncFolder(folder);
}

FileResult<void> MemoryFileSystem::appendLine(const fs::path& path, std::string_view line) {
    const std::scoped_lock guard(state_->mutex);
    NodePointer node = state_->find(path);
    const bool isNew = !node;
    if (isNew) {
        FileResult<NodePointer> made = state_->make(normalized(path), FileKind::file);
        if (!made) return std::unexpected(made.error());
        node = std::move(*made);
    }
    if (node->kind != FileKind::file) return failure(FileError::Kind::other, path, "is a folder");
    std::string data = node->content.empty() || node->content.ends_with('\n') ? "" : "\n";
    data.append(line).push_back('\n');
    if (FileResult<void> written = state_->write(*node, path, data); !written) return written;
    if (FileResult<void> synced = state_->sync(*node, path); !synced) return synced;
    return isNew ? state_->syncFolder(normalized(path).parent_path()) : FileResult<void>();
}

std::expected<std::unique_ptr<FolderLock>, LockFailure> MemoryFileSystem::lock(const fs::path& folder) {
    const std::scoped_lock guard(state_->mutex);
    const fs::path place = normalized(folder);
    if (!state_->findFolder(place)) return std::unexpected(LockFailure{.message = missing(folder).error().message});
    if (!state_->locked.insert(place).second) {
        return std::unexpected(LockFailure{
            .heldByOther = true, .holder = kOwnProcess, .message = folder.string() + ": locked by another program"});
    }
    if (!state_->find(place / kLockFileName)) {
        if (const FileResult<NodePointer> made = state_->make(place / kLockFileName, FileKind::file); !made) {
            state_->locked.erase(place);
            return std::unexpected(LockFailure{.message = made.error().message});
        }
    }
    return std::make_unique<Lock>(state_, place);
}

}  // namespace tessary
