#pragma once

#include <filesystem>

namespace tessary {

/// Where the parts of a library lie.
struct LibraryFolders {
    std::filesystem::path base;  ///< the folder "Notara"

    [[nodiscard]] std::filesystem::path entries() const { return base / "entries.json"; }
    [[nodiscard]] std::filesystem::path notebooks() const { return base / "notebooks.json"; }
    [[nodiscard]] std::filesystem::path trash() const { return base / "trash.json"; }
    [[nodiscard]] std::filesystem::path exams() const { return base / "exams.json"; }
    [[nodiscard]] std::filesystem::path flashcards() const { return base / "flashcards.json"; }
    [[nodiscard]] std::filesystem::path backups() const { return base / "Backups"; }
    [[nodiscard]] std::filesystem::path dailyBackups() const { return base / "Backups" / "Daily"; }
    [[nodiscard]] std::filesystem::path reviews() const { return base / "Reviews"; }
    [[nodiscard]] std::filesystem::path images() const { return base / "images"; }
    [[nodiscard]] std::filesystem::path audio() const { return base / "audio"; }
    [[nodiscard]] std::filesystem::path pdfs() const { return base / "pdfs"; }
    [[nodiscard]] std::filesystem::path covers() const { return base / "covers"; }
};

}  // namespace tessary
