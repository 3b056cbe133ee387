#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "library/journal_store.h"
#include "platform/adapters/icu/icu_calendar.h"
#include "platform/atomic_write.h"
#include "support/fakes.h"
#include "support/memory_file_system.h"
#include "support/virtual_loop.h"

namespace tessary {

class MapSettings final : public Settings {
public:
    std::optional<std::string> text(std::string_view key) const override { return find(texts_, key); }
    std::optional<bool> boolean(std::string_view) const override { return std::nullopt; }
    std::optional<std::int64_t> integer(std::string_view) const override { return std::nullopt; }
    std::optional<double> number(std::string_view) const override { return std::nullopt; }
    std::optional<Bytes> data(std::string_view key) const override { return find(data_, key); }
    Stored setText(std::string_view key, std::string_view value) override {
        texts_[std::string(key)] = value;
        return {};
    }
    Stored setBoolean(std::string_view, bool) override { return std::unexpected("not kept"); }
    Stored setInteger(std::string_view, std::int64_t) override { return std::unexpected("not kept"); }
    Stored setNumber(std::string_view, double) override { return std::unexpected("not kept"); }
    Stored setData(std::string_view key, const Bytes& value) override {
        data_[std::string(key)] = value;
        return {};
    }
    Stored remove(std::string_view) override { return {}; }
    std::vector<std::string> keys() const override { return {}; }

private:
    template <class V>
    static std::optional<V> find(const std::map<std::string, V>& values, std::string_view key) {
        const auto found = values.find(std::string(key));
        return found == values.end() ? std::nullopt : std::optional<V>(found->second);
    }

    std::map<std::string, std::string> texts_;
    std::map<std::string, Bytes> data_;
};

class StoreTest : public testing::Test {
protected:
    StoreTest() { EXPECT_TRUE(files.createFolders(folders.base)); }

    StoreServices services() { return {files, loop, clock, calendar, ids, settings, console, notifications}; }

    std::unique_ptr<JournalStore> open(StoreAccess access = StoreAccess::readWrite) {
        return std::make_unique<JournalStore>(folders, services(), queue, access);
    }
    void put(const std::filesystem::path& path, const std::string& content) {
        ASSERT_TRUE(files.createFolders(path.parent_path()));
        ASSERT_TRUE(writeAtomically(files, path, content));
    }
    std::string content(const std::filesystem::path& path) const { return files.read(path).value_or("(none)"); }
    std::vector<std::string> names(const std::filesystem::path& folder, const std::string& prefix) const {
        std::vector<std::string> found;
        const auto entries = files.list(folder);
        if (!entries) return found;
        for (const DirectoryEntry& entry : *entries) {
            if (entry.kind == FileKind::file && entry.name.starts_with(prefix)) found.push_back(entry.name);
        }
        return found;
    }
    static JournalEntry page(const std::string& title, std::optional<PageId> parent = {}) {
        JournalEntry made;
        made.title = title;
        made.parentID = parent;
        return made;
    }
    template <class T>
    void putRecords(const std::filesystem::path& path, const std::vector<T>& records) {
        put(path, *encodeJson(records));
    }
    template <class T>
    std::vector<T> recordsIn(const std::filesystem::path& path) const {
        return decodeJson<std::vector<T>>(content(path), ReadContext{}).value_or(std::vector<T>{});
    }

    MemoryFileSystem files;
    VirtualLoop loop;
    ManualClock clock{*parseIso8601("2026-11-21T09:30:00Z")};
    IcuCalendar calendar{"Europe/Berlin"};
    SequentialIds ids;
    MapSettings settings;
    RecordingConsole console;
    NotificationCenter notifications;
    InlineQueue queue;
    LibraryFolders folders{"/library"};
};

}  // namespace tessary
