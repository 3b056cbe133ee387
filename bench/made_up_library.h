#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "library/journal_store.h"
#include "library/store_services.h"
#include "platform/adapters/icu/icu_calendar.h"
#include "platform/adapters/ini/ini_settings.h"
#include "platform/adapters/posix/posix_file_system.h"
#include "platform/adapters/system/random_ids.h"
#include "platform/adapters/system/stream_console.h"
#include "platform/adapters/system/system_clock.h"
#include "platform/adapters/threads/event_loop.h"
#include "study/flashcard_store.h"

namespace tessary {

/// The moment at which the made-up libraries are used.
inline constexpr Date kBenchNow{817007400};

/// Cards of 10,000 pages, most of them in review, some due; every time the same ones.
[[nodiscard]] FlashcardFile madeUpCards(std::size_t count);

/// Pages of about 5 kB; every time the same ones.
[[nodiscard]] RecordList<JournalEntry>::Snapshot madeUpPages(std::size_t count);

/// The file content, as the reader wants it: with spare capacity.
[[nodiscard]] std::string cardsText(std::size_t count);
[[nodiscard]] std::string pagesText(std::size_t count);

[[nodiscard]] ReadContext benchContext();

/// A folder of its own in the build tree, so that the disk under test is the one the project lies on; removed at the
/// end.
class BenchFolder {
public:
    BenchFolder();
    ~BenchFolder();
    BenchFolder(const BenchFolder&) = delete;
    BenchFolder& operator=(const BenchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    void put(const std::string& name, const std::string& content) const;

private:
    std::filesystem::path path_;
};

/// The ports as the program has them, on the calendar of one place.
class BenchServices {
public:
    explicit BenchServices(const std::filesystem::path& folder);

    [[nodiscard]] StoreServices all() { return {files, loop, clock, calendar, ids, settings, console, notifications}; }

    PosixFileSystem files;
    EventLoop loop;
    SystemClock clock;
    IcuCalendar calendar{"Europe/Berlin"};
    RandomIds ids;
    IniSettings settings;
    StreamConsole console;
    NotificationCenter notifications;
};

/// Both stores, opened on made-up files.
class OpenLibrary {
public:
    /// Nothing is written with `readOnly`, and no backups are made. `queue` outlives the library.
    OpenLibrary(std::size_t pages, std::size_t cards, SerialQueue& queue, StoreAccess access);

private:
    BenchFolder folder_;

public:
    BenchServices services;
    ReviewLog log;
    JournalStore pages;
    FlashcardStore cards;
};

}  // namespace tessary
