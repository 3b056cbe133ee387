#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/adapters/posix/posix_file_system.h"
#include "platform/file_system.h"
#include "support/memory_file_system.h"

namespace tessary {

namespace fs = std::filesystem;

enum class Kind { posix, memory };

inline fs::path freshFolder() {
    static std::atomic<int> count = 0;
    return fs::path(::testing::TempDir()) /
           ("tessary-files-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
}

inline std::unique_ptr<FileSystem> makeFiles(Kind kind) {
    if (kind == Kind::posix) return std::make_unique<PosixFileSystem>();
    return std::make_unique<MemoryFileSystem>();
}

template <class T>
FileError::Kind errorOf(const FileResult<T>& result) {
    EXPECT_FALSE(result.has_value());
    if (result) return FileError::Kind::other;
    EXPECT_FALSE(result.error().message.empty());
    return result.error().kind;
}

/// A new folder for each test, removed at its end.
class FolderFixture {
protected:
    explicit FolderFixture(Kind kind) : files_(makeFiles(kind)) { EXPECT_TRUE(files_->createFolders(folder_)); }
    ~FolderFixture() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    void put(const fs::path& path, std::string_view content) const {
        FileResult<std::unique_ptr<WritableFile>> file = files_->create(path);
        ASSERT_TRUE(file) << file.error().message;
        ASSERT_TRUE((*file)->write(content));
        ASSERT_TRUE((*file)->sync());
    }
    [[nodiscard]] std::string get(const fs::path& path) const { return files_->read(path).value_or("(nothing)"); }

    fs::path folder_ = freshFolder();
    std::unique_ptr<FileSystem> files_;
};

}  // namespace tessary
