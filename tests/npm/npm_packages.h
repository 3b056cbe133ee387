#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tessary {

/// A file of the npm packages that `./dev test` installs. Throws when it is missing: nothing is measured without them.
[[nodiscard]] inline std::filesystem::path npmFile(const std::filesystem::path& name) {
    const std::filesystem::path file = std::filesystem::path(TESSARY_NPM) / name;
    if (!std::filesystem::exists(file)) {
        throw std::runtime_error("These tests need npm packages, and " + file.string() +
                                 " is missing. “./dev test” installs them.");
    }
    return file;
}

/// A folder that is removed at the end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "tessary-npm-XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("No temporary folder.");
        path_ = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    std::filesystem::path write(const std::string& name, std::string_view content) const {
        std::ofstream stream(path_ / name, std::ios::binary);
        stream << content;
        if (!stream.flush()) throw std::runtime_error("Can't write " + name);
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

}  // namespace tessary
