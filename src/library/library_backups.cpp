#include "library/library_backups.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <vector>

#include "platform/atomic_write.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = "entries-";
constexpr std::string_view kExtension = ".json";
constexpr std::string_view kStampShape = "dddd-dd-dd-dddddd";
constexpr std::string_view kDayShape = "dddd-dd-dd";

bool hasShape(std::string_view text, std::string_view shape) {
    return std::ranges::equal(text, shape, [](char c, char s) { return s == 'd' ? c >= '0' && c <= '9' : c == s; });
}

/// What stands between the prefix and the extension.
std::optional<std::string_view> keyOf(std::string_view name) {
    if (name.size() < kPrefix.size() + kExtension.size()) return std::nullopt;
    if (!name.starts_with(kPrefix) || !name.ends_with(kExtension)) return std::nullopt;
    return name.substr(kPrefix.size(), name.size() - kPrefix.size() - kExtension.size());
}

struct RollingBackup {
    std::string stamp;
    int number = 1;
    std::string name;

    friend auto operator<=>(const RollingBackup&, const RollingBackup&) = default;
};

std::optional<RollingBackup> parseRolling(const std::string& name) {
    const std::optional<std::string_view> key = keyOf(name);
    if (!key || !hasShape(key->substr(0, kStampShape.size()), kStampShape)) return std::nullopt;
    RollingBackup backup{.stamp = std::string(key->substr(0, kStampShape.size())), .number = 1, .name = name};
    const std::string_view rest = key->substr(kStampShape.size());
    if (rest.empty()) return backup;
    const char* const end = rest.data() + rest.size();
    const auto [stop, error] = std::from_chars(rest.data() + 1, end, backup.number);
    if (rest.front() != '-' || error != std::errc{} || stop != end || backup.number < 2) return std::nullopt;
    return backup;
}

std::vector<std::string> fileNames(const FileSystem& files, const fs::path& folder) {
    std::vector<std::string> names;
    const FileResult<std::vector<DirectoryEntry>> entries = files.list(folder);
    if (!entries) return names;
    for (const DirectoryEntry& entry : *entries) {
        if (entry.kind == FileKind::file) names.push_back(entry.name);
    }
    return names;
}

std::vector<RollingBackup> rollingBackups(const FileSystem& files, const fs::path& folder) {
    std::vector<RollingBackup> backups;
    for (const std::string& name : fileNames(files, folder)) {
        if (std::optional<RollingBackup> backup = parseRolling(name)) backups.push_back(std::move(*backup));
    }
    std::ranges::sort(backups);
    return backups;
}

/// Above all that are there, so that pruning within one second never frees a lower number for a later backup.
std::string rollingName(const std::vector<RollingBackup>& backups, const std::string& stamp) {
    int number = 1;
    for (const RollingBackup& backup : backups) {
        if (backup.stamp == stamp) number = std::max(number, backup.number + 1);
    }
    const std::string suffix = number == 1 ? "" : "-" + std::to_string(number);
    return std::string(kPrefix) + stamp + suffix + std::string(kExtension);
}

void report(const StoreServices& services, const FileError& error) {
    services.console.print("Notara: backup failed — " + error.message);
}

bool copyBackup(const StoreServices& services, const fs::path& from, const fs::path& to) {
    FileResult<void> copied = services.files.createFolders(to.parent_path());
    if (copied) copied = copyFile(services.files, from, to);
    if (!copied) report(services, copied.error());
    return copied.has_value();
}

void removeBackup(const StoreServices& services, const fs::path& path) {
    if (const FileResult<void> removed = services.files.remove(path); !removed) report(services, removed.error());
}

}  // namespace

void makeRollingBackup(const LibraryFolders& folders, const StoreServices& services, std::size_t keep) {
    FileSystem& files = services.files;
    if (const FileResult<void> made = files.createFolders(folders.backups()); !made) {
        return report(services, made.error());
    }
    if (!exists(files, folders.entries())) return;
    const std::string stamp = timeStamp(services.calendar.civilTime(services.clock.now()));
    const std::string name = rollingName(rollingBackups(files, folders.backups()), stamp);
    if (!copyBackup(services, folders.entries(), folders.backups() / name)) return;
    std::vector<RollingBackup> backups = rollingBackups(files, folders.backups());
    std::ranges::stable_partition(backups, [&](const RollingBackup& backup) { return backup.stamp > stamp; });
    std::erase_if(backups, [&](const RollingBackup& backup) { return backup.name == name; });
    for (std::size_t i = 0; i + keep <= backups.size(); ++i) {
        removeBackup(services, folders.backups() / backups[i].name);
    }
}

void makeDailyBackup(const LibraryFolders& folders, const StoreServices& services, int keepDays) {
    const Date now = services.clock.now();
    const fs::path folder = folders.dailyBackups();
    const std::string today = dayKey(services.calendar.civilTime(now).day);
    const fs::path path = folder / (std::string(kPrefix) + today + std::string(kExtension));
    if (!exists(services.files, path) && !copyBackup(services, folders.entries(), path)) return;
    const Date firstKept = services.calendar.addingDays(now, 1 - keepDays);
    const std::string firstKey = dayKey(services.calendar.civilTime(firstKept).day);
    std::vector<std::string> copies = fileNames(services.files, folder);
    std::erase_if(copies, [](const std::string& name) { return !hasShape(keyOf(name).value_or(""), kDayShape); });
    std::ranges::sort(copies);
    for (std::size_t i = 0; i + static_cast<std::size_t>(keepDays) < copies.size(); ++i) {
        if (*keyOf(copies[i]) < firstKey) removeBackup(services, folder / copies[i]);
    }
}

}  // namespace tessary
