#include "platform/adapters/ini/ini_settings.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>

#include "platform/adapters/posix/posix_file_system.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

/// The computer's files, until the renaming of new files is made to fail.
class FailingFileSystem final : public FileSystem {
public:
    bool fails = false;

    FileResult<std::string> read(const fs::path& path) const override { return files_.read(path); }
    FileResult<FileInfo> info(const fs::path& path) const override { return files_.info(path); }
    FileResult<std::vector<DirectoryEntry>> list(const fs::path& folder) const override { return files_.list(folder); }
    fs::path resolved(const fs::path& path) const override { return files_.resolved(path); }
    FileResult<void> createFolders(const fs::path& folder) override { return files_.createFolders(folder); }
    FileResult<std::unique_ptr<WritableFile>> create(const fs::path& path, const fs::path& like) override {
        return files_.create(path, like);
    }
    FileResult<void> rename(const fs::path& from, const fs::path& to) override {
        if (fails) return std::unexpected(FileError{FileError::Kind::noSpace, "disk full"});
        return files_.rename(from, to);
    }
    FileResult<void> remove(const fs::path& path) override { return files_.remove(path); }
    FileResult<void> syncFolder(const fs::path& folder) override { return files_.syncFolder(folder); }
    FileResult<void> appendLine(const fs::path& path, std::string_view line) override {
        return files_.appendLine(path, line);
    }
    std::expected<std::unique_ptr<FolderLock>, LockFailure> lock(const fs::path& folder) override {
        return files_.lock(folder);
    }

private:
    PosixFileSystem files_;
};

class IniSettingsTest : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "ini-settings-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
        path_ = folder_ / "sub" / "settings.ini";
    }
    void TearDown() override { fs::remove_all(folder_); }

    void put(std::string_view content) {
        fs::create_directories(path_.parent_path());
        std::ofstream(path_, std::ios::binary) << content;
    }
    std::string content() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    IniSettings open() { return {files_, path_}; }

    FailingFileSystem files_;
    fs::path folder_;
    fs::path path_;
};

TEST_F(IniSettingsTest, AMissingFileHasNoKeysAndIsMadeByTheFirstChange) {
    IniSettings settings = open();
    EXPECT_FALSE(settings.problem());
    EXPECT_TRUE(settings.keys().empty());
    EXPECT_TRUE(settings.remove("none"));
    EXPECT_FALSE(fs::exists(path_));
    ASSERT_TRUE(settings.setBoolean("editor.wrap", true));
    EXPECT_EQ(content(), "[General]\neditor.wrap=true\n");
}

TEST_F(IniSettingsTest, AwkwardTextsComeBack) {
    const std::vector<std::string> texts = {"",
                                            " ",
                                            "  both  ",
                                            "\t",
                                            "a;b,c=d",
                                            "\"quoted\"",
                                            "back\\slash\\",
                                            "line\nfeed\r\n",
                                            "@",
                                            "@@x",
                                            "@ByteArray(x)",
                                            "@Invalid()",
                                            "\x01"
                                            "f",
                                            "\x01\x02"
                                            "9",
                                            std::string("\0"
                                                        "7a",
                                                        3),
                                            "Käse 漢字 😀",
                                            "\x7F",
                                            "?'",
                                            "#",
                                            ";",
                                            "[x]",
                                            "true",
                                            "%20",
                                            "a=\"",
                                            "\\x41",
                                            "\xC2\xA0"};
    for (const std::string& text : texts) {
        IniSettings settings = open();
        ASSERT_TRUE(settings.setText("key", text));
        EXPECT_EQ(settings.text("key"), text);
        EXPECT_EQ(open().text("key"), text) << content();
    }
}

TEST_F(IniSettingsTest, AwkwardKeysComeBack) {
    const std::vector<std::string> keys = {"a b", "a/b", "a\\b", "a=b", ";c", "[k]",
                                           "%41", "ä",   "漢",   "😀",  "#x", "General"};
    IniSettings settings = open();
    for (const std::string& key : keys) ASSERT_TRUE(settings.setText(key, key));
    const IniSettings again = open();
    EXPECT_EQ(again.keys().size(), keys.size());
    for (const std::string& key : keys) EXPECT_EQ(again.text(key), key) << content();
    EXPECT_NE(content().find("\n%E4="), std::string::npos);
    EXPECT_NE(content().find("\n%U6F22="), std::string::npos);
    EXPECT_NE(content().find("\n%UD83D%UDE00="), std::string::npos);
}

TEST_F(IniSettingsTest, EveryByteOfDataComesBackBeforeEveryOther) {
    Bytes bytes;
    for (unsigned first = 0; first < 256; ++first) {
        for (const char second : std::string("0aF\\\" ,;=)g")) {
            bytes.data.push_back(static_cast<std::uint8_t>(first));
            bytes.data.push_back(static_cast<std::uint8_t>(second));
        }
    }
    IniSettings settings = open();
    ASSERT_TRUE(settings.setData("key", bytes));
    ASSERT_TRUE(settings.setData("none", {}));
    EXPECT_EQ(open().data("key"), bytes);
    EXPECT_EQ(open().data("none"), Bytes{});
    EXPECT_FALSE(settings.text("key"));
}

TEST_F(IniSettingsTest, NumbersComeBack) {
    IniSettings settings = open();
    for (const double value : {0.1, -2.0, 1e300, 5e-324, std::numeric_limits<double>::max()}) {
        ASSERT_TRUE(settings.setNumber("key", value));
        EXPECT_EQ(open().number("key"), value);
    }
    ASSERT_TRUE(settings.setInteger("whole", std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(open().integer("whole"), std::numeric_limits<std::int64_t>::min());
    EXPECT_FALSE(settings.setNumber("key", std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(settings.setText("key", "\xFF"));
    EXPECT_FALSE(settings.setText("", "x"));
}

TEST_F(IniSettingsTest, PlainConversions) {
    put("one=1\nyes=True\nword=maybe\ninf=inf\nbig=99999999999999999999\n");
    const IniSettings settings = open();
    EXPECT_EQ(settings.boolean("one"), true);
    EXPECT_EQ(settings.number("one"), 1.0);
    EXPECT_EQ(settings.text("one"), "1");
    EXPECT_EQ(settings.boolean("yes"), true);
    EXPECT_FALSE(settings.boolean("word"));
    EXPECT_FALSE(settings.integer("word"));
    EXPECT_FALSE(settings.data("word"));
    EXPECT_FALSE(settings.number("inf"));
    EXPECT_FALSE(settings.integer("big"));
}

TEST_F(IniSettingsTest, ReadsAFileAsQSettingsWritesIt) {
    put("[General]\n"
        "bytes=@ByteArray(\\0\\x1\\xff\\x61z)\n"
        "bytes.quoted=\"@ByteArray(a;b)\"\n"
        "empty=\n"
        "gone=@Invalid()\n"
        "list=one, two\n"
        "mail=@@me\n"
        "quoted=\" a, b; \\\"c\\\" \\\\ \"\n"
        "size=@Size(3 4)\n"
        "the%20key=Gr\xC3\xBC\xC3\x9F"
        "e\\n\n"
        "zero=\"@String(a\\0,)\"\n"
        "\n[window]\nstate=1\n");
    const IniSettings settings = open();
    EXPECT_EQ(settings.data("bytes"), (Bytes{{0, 1, 0xFF, 'a', 'z'}}));
    EXPECT_EQ(settings.data("bytes.quoted"), (Bytes{{'a', ';', 'b'}}));
    EXPECT_EQ(settings.text("empty"), "");
    EXPECT_EQ(settings.text("mail"), "@me");
    EXPECT_EQ(settings.text("quoted"), " a, b; \"c\" \\ ");
    EXPECT_EQ(settings.text("the key"), "Grüße\n");
    EXPECT_EQ(settings.text("zero"), std::string("a\0,", 3));
    EXPECT_FALSE(settings.text("list"));
    EXPECT_FALSE(settings.text("size"));
    EXPECT_FALSE(settings.text("state"));
    EXPECT_EQ(settings.keys(), (std::vector<std::string>{"bytes", "bytes.quoted", "empty", "list", "mail", "quoted",
                                                         "size", "the key", "zero"}));
}

TEST_F(IniSettingsTest, WritesAsQSettingsDoes) {
    IniSettings settings = open();
    ASSERT_TRUE(settings.setData("d", Bytes{{0, '1', 0xFF, 'a', 'z', ','}}));
    ASSERT_TRUE(settings.setText("t",
                                 "@a=\t\x01"
                                 "f"));
    EXPECT_EQ(content(), "[General]\nd=\"@ByteArray(\\0\\x31\\xff\\x61z,)\"\nt=\"@@a=\\t\\x1\\x66\"\n");
}

TEST_F(IniSettingsTest, ForeignLinesStay) {
    put("\xEF\xBB\xBF; head\r\n[Other]\r\na=1\r\n"
        "[General]\r\n# note\r\na=2\r\nnonsense\r\nopen=\"x\r\na=3\r\n\r\n[Last]\r\nz");
    IniSettings settings = open();
    EXPECT_EQ(settings.text("a"), "3");
    ASSERT_TRUE(settings.setInteger("a", 4));
    ASSERT_TRUE(settings.setText("b", "x;"));
    EXPECT_EQ(content(),
              "\xEF\xBB\xBF; head\r\n[Other]\r\na=1\r\n"
              "[General]\r\n# note\r\nnonsense\r\nopen=\"x\r\na=4\r\nb=\"x;\"\r\n"
              "\r\n[Last]\r\nz");
    ASSERT_TRUE(settings.remove("a"));
    EXPECT_FALSE(open().text("a"));
    EXPECT_NE(content().find("[Other]\r\na=1"), std::string::npos);
}

TEST_F(IniSettingsTest, ASectionIsAddedBehindForeignOnes) {
    put("[Other]\na=1");
    ASSERT_TRUE(open().setText("b", "2"));
    EXPECT_EQ(content(), "[Other]\na=1\n\n[General]\nb=2\n");
    EXPECT_EQ(open().text("b"), "2");
}

TEST_F(IniSettingsTest, ChangesOfAnotherProgramStay) {
    IniSettings first = open();
    IniSettings second = open();
    ASSERT_TRUE(first.setText("a", "1"));
    ASSERT_TRUE(second.setText("b", "2"));
    EXPECT_EQ(second.text("a"), "1");
    EXPECT_EQ(open().keys(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(IniSettingsTest, AFileThatIsNotUtf8IsNeverWritten) {
    put("[General]\na=\xFF\n");
    IniSettings settings = open();
    EXPECT_TRUE(settings.problem());
    const Settings::Stored stored = settings.setText("a", "b");
    ASSERT_FALSE(stored);
    EXPECT_EQ(stored.error(), settings.problem());
    EXPECT_EQ(content(), "[General]\na=\xFF\n");
    put("a=1\n");
    EXPECT_TRUE(settings.setText("b", "2"));
    EXPECT_FALSE(settings.problem());
    EXPECT_EQ(content(), "a=1\nb=2\n");
}

TEST_F(IniSettingsTest, AFileThatCannotBeOpenedIsNeverWritten) {
    fs::create_directories(path_);
    IniSettings settings = open();
    EXPECT_TRUE(settings.problem());
    EXPECT_FALSE(settings.setText("a", "b"));
    EXPECT_FALSE(settings.remove("a"));
    EXPECT_TRUE(fs::is_directory(path_));
    EXPECT_TRUE(settings.keys().empty());
}

TEST_F(IniSettingsTest, AFailedWriteChangesNothing) {
    IniSettings settings = open();
    ASSERT_TRUE(settings.setText("a", "1"));
    files_.fails = true;
    const Settings::Stored stored = settings.setText("a", "2");
    ASSERT_FALSE(stored);
    EXPECT_NE(stored.error().find("disk full"), std::string::npos);
    EXPECT_FALSE(settings.remove("a"));
    EXPECT_EQ(settings.text("a"), "1");
    EXPECT_EQ(content(), "[General]\na=1\n");
}

}  // namespace
}  // namespace tessary
