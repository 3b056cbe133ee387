#pragma once

#include <expected>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "library/journal_store.h"

/// The library's ways out of and into the program.
namespace tessary {

inline constexpr std::string_view kJsonExportName = "Tessary Export.json";
inline constexpr std::string_view kMarkdownExportName = "Tessary Export.md";
inline constexpr std::string_view kNothingToExport = "There are no pages to export.";

/// What exports are made of. Cheap to take, and then for any thread.
struct ExportSource {
    RecordList<JournalEntry>::Snapshot pages;
    RecordList<Notebook>::Snapshot notebooks;
};

[[nodiscard]] ExportSource exportSource(const JournalStore& store);

/// All live pages as pretty-printed JSON with sorted keys and ISO 8601 dates. Refused when there are none.
[[nodiscard]] std::expected<std::string, Refusal> exportedJson(const ExportSource& source);
[[nodiscard]] std::expected<std::string, Refusal> exportedJson(const JournalStore& store);

/// All live pages as one Markdown document, subpages after their parents. Refused when there are none.
[[nodiscard]] std::expected<std::string, Refusal> exportedMarkdown(const ExportSource& source);
[[nodiscard]] std::expected<std::string, Refusal> exportedMarkdown(const JournalStore& store);

/// Writes an export to a file of the user's choice; a failure also goes to the console
/// ("Notara: export failed — ").
std::expected<void, Refusal> writeExport(const std::filesystem::path& file, std::string_view content, FileSystem& files,
                                         Console& console);

struct ImportCount {
    std::size_t added = 0;
    std::size_t skipped = 0;  ///< their identity is already in the library
};

/// The pages of an export (or of a library file), parents before their subpages. A failure also goes to the console
/// ("Notara: import failed — "). Any thread.
std::expected<std::vector<JournalEntry>, Refusal> readExport(const std::filesystem::path& file, Date now,
                                                             const StoreServices& services);

/// Adds those of `pages`, which come parents first, whose identity is not in the library yet; pages in the trash count
/// as in the library.
ImportCount addMissing(JournalStore& store, std::span<const JournalEntry> pages);

/// Adds every page of an export (or of a library file) whose identity is not in the library yet; pages in the trash
/// count as in the library. Nothing is added when the file cannot be read; a failure also goes to the console
/// ("Notara: import failed — ").
std::expected<ImportCount, Refusal> importJson(JournalStore& store, const std::filesystem::path& file,
                                               const StoreServices& services);

/// Where today's automatic backup goes, in `documents`/"Tessary Backups".
[[nodiscard]] std::filesystem::path autoBackupFolder(const std::filesystem::path& documents);
[[nodiscard]] std::filesystem::path autoBackupFile(const std::filesystem::path& documents,
                                                   const StoreServices& services);

/// The automatic backup on quit: all live pages in the export's format, as "Tessary-yyyy-MM-dd.json" in
/// `documents`/"Tessary Backups". A second one on the same day replaces the first. An empty library needs none. Not
/// made when a library file could not be read at start.
std::expected<void, Refusal> writeAutoBackup(const JournalStore& store, const std::filesystem::path& documents,
                                             const StoreServices& services);

}  // namespace tessary
