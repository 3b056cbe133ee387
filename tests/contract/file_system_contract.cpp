#include <string>

#include "contract/folder_fixture.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

class FileSystemContract : public FolderFixture, public ::testing::TestWithParam<Kind> {
protected:
    FileSystemContract() : FolderFixture(GetParam()) {}
};

TEST_P(FileSystemContract, ReadsWhatWasWritten) {
    const std::string binary("a\0b\n\xff", 5);
    const std::string large(300000, 'x');
    put(folder_ / "binary", binary);
    put(folder_ / "large", large);
    put(folder_ / "empty", "");
    EXPECT_EQ(get(folder_ / "binary"), binary);
    EXPECT_EQ(get(folder_ / "large"), large);
    EXPECT_EQ(get(folder_ / "empty"), "");
}

TEST_P(FileSystemContract, ReadsWithSpareCapacity) {
    for (const std::size_t size : {0U, 1U, 4096U, 70000U}) {
        const fs::path path = folder_ / std::to_string(size);
        put(path, std::string(size, 'x'));
        const FileResult<std::string> content = files_->read(path);
        ASSERT_TRUE(content);
        EXPECT_EQ(content->size(), size);
        EXPECT_GE(content->capacity(), size + 64);
    }
}

TEST_P(FileSystemContract, WritesInPieces) {
    FileResult<std::unique_ptr<WritableFile>> file = files_->create(folder_ / "a");
    ASSERT_TRUE(file);
    ASSERT_TRUE((*file)->write("one "));
    ASSERT_TRUE((*file)->write("two"));
    ASSERT_TRUE((*file)->sync());
    EXPECT_EQ(get(folder_ / "a"), "one two");
}

TEST_P(FileSystemContract, RefusesToReadWhatIsNoFile) {
    EXPECT_EQ(errorOf(files_->read(folder_ / "none")), FileError::Kind::notFound);
    EXPECT_EQ(errorOf(files_->read(folder_)), FileError::Kind::other);
    put(folder_ / "file", "");
    EXPECT_EQ(errorOf(files_->read(folder_ / "file" / "inside")), FileError::Kind::notFound);
}

TEST_P(FileSystemContract, ErrorsNameThePath) {
    const FileResult<std::string> content = files_->read(folder_ / "none");
    ASSERT_FALSE(content);
    EXPECT_TRUE(content.error().message.starts_with((folder_ / "none").string() + ": ")) << content.error().message;
}

TEST_P(FileSystemContract, CreatesOnlyWhereNothingLies) {
    put(folder_ / "a", "kept");
    EXPECT_EQ(errorOf(files_->create(folder_ / "a")), FileError::Kind::alreadyExists);
    EXPECT_EQ(errorOf(files_->create(folder_ / "none" / "a")), FileError::Kind::notFound);
    EXPECT_EQ(get(folder_ / "a"), "kept");
}

TEST_P(FileSystemContract, RenamesOverWhatLiesThere) {
    put(folder_ / "a", "new");
    put(folder_ / "b", "old");
    ASSERT_TRUE(files_->rename(folder_ / "a", folder_ / "b"));
    EXPECT_EQ(get(folder_ / "b"), "new");
    EXPECT_FALSE(exists(*files_, folder_ / "a"));
    EXPECT_TRUE(files_->syncFolder(folder_));
}

TEST_P(FileSystemContract, RenamesFoldersWithTheirContent) {
    ASSERT_TRUE(files_->createFolders(folder_ / "one"));
    put(folder_ / "one" / "a", "content");
    ASSERT_TRUE(files_->rename(folder_ / "one", folder_ / "two"));
    EXPECT_EQ(get(folder_ / "two" / "a"), "content");
}

TEST_P(FileSystemContract, RefusesToRenameWhatIsMissingOrOntoAFolder) {
    put(folder_ / "a", "kept");
    ASSERT_TRUE(files_->createFolders(folder_ / "sub"));
    EXPECT_EQ(errorOf(files_->rename(folder_ / "none", folder_ / "b")), FileError::Kind::notFound);
    EXPECT_EQ(errorOf(files_->rename(folder_ / "a", folder_ / "none" / "a")), FileError::Kind::notFound);
    EXPECT_EQ(errorOf(files_->rename(folder_ / "a", folder_ / "sub")), FileError::Kind::other);
    EXPECT_EQ(get(folder_ / "a"), "kept");
}

TEST_P(FileSystemContract, RemovesFilesAndEmptyFolders) {
    ASSERT_TRUE(files_->createFolders(folder_ / "sub"));
    put(folder_ / "sub" / "a", "");
    EXPECT_EQ(errorOf(files_->remove(folder_ / "sub")), FileError::Kind::other);
    EXPECT_TRUE(files_->remove(folder_ / "sub" / "a"));
    EXPECT_TRUE(files_->remove(folder_ / "sub"));
    EXPECT_EQ(errorOf(files_->remove(folder_ / "sub")), FileError::Kind::notFound);
}

TEST_P(FileSystemContract, CreatesFoldersWithTheirParents) {
    const fs::path deep = folder_ / "a" / "b" / "c";
    ASSERT_TRUE(files_->createFolders(deep));
    ASSERT_TRUE(files_->createFolders(deep));
    put(deep / "file", "");
    EXPECT_EQ(errorOf(files_->createFolders(deep / "file")), FileError::Kind::alreadyExists);
    EXPECT_EQ(errorOf(files_->createFolders(deep / "file" / "d")), FileError::Kind::alreadyExists);
}

TEST_P(FileSystemContract, ListsByName) {
    put(folder_ / "b", "");
    put(folder_ / "a", "");
    put(folder_ / "B", "");
    ASSERT_TRUE(files_->createFolders(folder_ / "sub"));
    const FileResult<std::vector<DirectoryEntry>> entries = files_->list(folder_);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 4U);
    const char* const names[] = {"B", "a", "b", "sub"};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ((*entries)[i].name, names[i]);
        EXPECT_EQ((*entries)[i].kind, i == 3 ? FileKind::directory : FileKind::file);
        EXPECT_FALSE((*entries)[i].isSymbolicLink);
    }
    EXPECT_EQ(errorOf(files_->list(folder_ / "none")), FileError::Kind::notFound);
    EXPECT_FALSE(files_->list(folder_ / "a"));
}

TEST_P(FileSystemContract, TellsKindAndSize) {
    put(folder_ / "a", "12345");
    const FileResult<FileInfo> file = files_->info(folder_ / "a");
    ASSERT_TRUE(file);
    EXPECT_EQ(file->kind, FileKind::file);
    EXPECT_EQ(file->size, 5U);
    const FileResult<FileInfo> folder = files_->info(folder_);
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->kind, FileKind::directory);
    EXPECT_EQ(errorOf(files_->info(folder_ / "none")), FileError::Kind::notFound);
}

TEST_P(FileSystemContract, AppendsLines) {
    const fs::path path = folder_ / "journal";
    ASSERT_TRUE(files_->appendLine(path, "one"));
    ASSERT_TRUE(files_->appendLine(path, "two"));
    EXPECT_EQ(get(path), "one\ntwo\n");
    EXPECT_EQ(errorOf(files_->appendLine(folder_ / "none" / "journal", "x")), FileError::Kind::notFound);
    EXPECT_FALSE(files_->appendLine(folder_, "x"));
}

TEST_P(FileSystemContract, EndsATornLineBeforeAppending) {
    put(folder_ / "journal", "one\ntw");
    ASSERT_TRUE(files_->appendLine(folder_ / "journal", "three"));
    EXPECT_EQ(get(folder_ / "journal"), "one\ntw\nthree\n");
}

TEST_P(FileSystemContract, LocksAFolderOnce) {
    {
        const auto lock = files_->lock(folder_);
        ASSERT_TRUE(lock) << lock.error().message;
        const auto second = files_->lock(folder_);
        ASSERT_FALSE(second);
        EXPECT_TRUE(second.error().heldByOther);
        EXPECT_GT(second.error().holder, 0);
        EXPECT_FALSE(second.error().message.empty());
    }
    EXPECT_TRUE(exists(*files_, folder_ / kLockFileName));
    EXPECT_TRUE(files_->lock(folder_));
}

TEST_P(FileSystemContract, CannotLockAFolderThatIsMissing) {
    const auto lock = files_->lock(folder_ / "none");
    ASSERT_FALSE(lock);
    EXPECT_FALSE(lock.error().heldByOther);
    EXPECT_EQ(lock.error().holder, 0);
    EXPECT_FALSE(lock.error().message.empty());
}

TEST_P(FileSystemContract, ReplacesAFileWhole) {
    ASSERT_TRUE(writeAtomically(*files_, folder_ / "a", "old"));
    ASSERT_TRUE(writeAtomically(*files_, folder_ / "a", "new"));
    EXPECT_EQ(get(folder_ / "a"), "new");
    EXPECT_EQ(files_->list(folder_)->size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Files, FileSystemContract, ::testing::Values(Kind::posix, Kind::memory),
                         [](const auto& test) { return test.param == Kind::posix ? "Posix" : "Memory"; });

}  // namespace
}  // namespace tessary
