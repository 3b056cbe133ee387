#include "app/app_paths.h"

#include "base/text.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

/// The base directory standard passes over paths that are not absolute.
fs::path baseDirectory(const Environment& environment, std::string_view variable, const fs::path& fallback) {
    const fs::path path = environment(variable).value_or("");
    return path.is_absolute() ? path : fallback;
}

/// A value of user-dirs.dirs: "\"$HOME/Dokumente\"" or "\"/data/docs\"".
std::optional<fs::path> userDirectory(std::string_view value, const fs::path& home) {
    constexpr std::string_view kHome = "$HOME";
    if (value.size() < 2 || value.front() != '"' || value.back() != '"') return std::nullopt;
    const std::string path = replacedAll(value.substr(1, value.size() - 2), "\\", "");
    if (path.starts_with(kHome)) return home / fs::path(path.substr(kHome.size())).relative_path();
    return path.starts_with("/") ? std::optional<fs::path>(path) : std::nullopt;
}

fs::path documentsFolder(const fs::path& configuration, const fs::path& home, const FileSystem& files) {
    constexpr std::string_view kKey = "XDG_DOCUMENTS_DIR=";
    fs::path documents = home / "Documents";
    const FileResult<std::string> content = files.read(configuration / "user-dirs.dirs");
    if (!content) return documents;
    for (const std::string_view line : splitLines(*content)) {
        const std::string_view entry = trimmed(line);
        if (!entry.starts_with(kKey)) continue;
        if (const auto named = userDirectory(entry.substr(kKey.size()), home)) documents = *named;
    }
    return documents;
}

}  // namespace

std::expected<AppPaths, std::string> portablePaths(const fs::path& home, const FileSystem& files) {
    const FileResult<FileInfo> info = files.info(home);
    if (!info && info.error().kind == FileError::Kind::notFound) {
        return std::unexpected("There is no folder \"" + home.string() +
                               "\". Create it first, or choose another home.");
    }
    if (!info) return std::unexpected(info.error().message);
    if (info->kind != FileKind::directory) {
        return std::unexpected("\"" + home.string() + "\" is not a folder, so it can't be the home of a library.");
    }
    const fs::path folder = files.resolved(home);
    return AppPaths{.library = {folder / "Notara"},
                    .settings = folder / "settings.ini",
                    .documents = folder / "Documents",
                    .home = folder};
}

std::expected<AppPaths, std::string> desktopPaths(const Environment& environment, const FileSystem& files) {
    const fs::path home = environment("HOME").value_or("");
    if (!home.is_absolute()) {
        return std::unexpected("Your home folder isn't known (HOME is not set). Choose one with --home.");
    }
    const fs::path configuration = baseDirectory(environment, "XDG_CONFIG_HOME", home / ".config");
    return AppPaths{.library = {baseDirectory(environment, "XDG_DATA_HOME", home / ".local/share") / "Notara"},
                    .settings = configuration / "Notara" / "settings.ini",
                    .documents = documentsFolder(configuration, home, files),
                    .home = home};
}

}  // namespace tessary
