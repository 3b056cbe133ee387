#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "library/image_references.h"
#include "library/journal_store.h"
#include "platform/file_system.h"

namespace tessary {

struct StoredImage {
    std::optional<std::string> name;  ///< in the library's images
    std::string problem;              ///< goes on after the name of the note; neither: it is none of ours
};

enum class ImageSearch {
    nearNote,       ///< beside the note and in the folders usual for attachments
    wholeImported,  ///< also anywhere in the imported folder
};

/// Brings the images of the notes under one root into the library. Nothing outside the root is copied, whatever a
/// target or a link of the disk says. Main thread; blocks.
class ImageImporter {
public:
    ImageImporter(JournalStore& store, const FileSystem& files, std::filesystem::path root, ImageSearch search);

    [[nodiscard]] StoredImage take(const ImageReference& image, const std::filesystem::path& noteFolder);

private:
    struct Found {
        std::filesystem::path path;
        bool isOutside = false;  ///< something was found, but a link leads out of the root to it
    };

    Found find(const ImageReference& image, const std::filesystem::path& noteFolder);
    bool tryPath(const std::filesystem::path& path, Found& found) const;
    void learnNames();
    void learnNamesIn(const std::filesystem::path& folder, std::vector<std::filesystem::path>& deeper);
    std::expected<std::string, Refusal> stored(const std::filesystem::path& path);

    JournalStore& store_;
    const FileSystem& files_;
    std::filesystem::path root_;
    ImageSearch search_;
    std::filesystem::path realRoot_;
    bool namesKnown_ = false;
    std::unordered_map<std::string, std::filesystem::path> byName_;  // by the name in small letters
    std::unordered_map<std::string, std::string> storedNames_;       // by the path
};

}  // namespace tessary
