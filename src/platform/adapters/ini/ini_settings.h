#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"
#include "platform/settings.h"

namespace tessary {

/// Settings in an INI file that QSettings reads and writes too: all keys lie in the section [General].
///
/// What else the file holds (other sections, comments, lines that make no sense) is kept as it is. The file is read
/// anew before each change, so that changes by another program in the meantime are kept. A file that exists but cannot
/// be read, or is not UTF-8, is never written.
class IniSettings final : public Settings {
public:
    /// `files` must outlive the settings.
    IniSettings(FileSystem& files, std::filesystem::path path);

    /// Why the file could not be read the last time; changes are refused for as long.
    [[nodiscard]] const std::optional<std::string>& problem() const { return problem_; }

    [[nodiscard]] std::optional<std::string> text(std::string_view key) const override;
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const override;
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const override;
    [[nodiscard]] std::optional<double> number(std::string_view key) const override;
    [[nodiscard]] std::optional<Bytes> data(std::string_view key) const override;

    [[nodiscard]] Stored setText(std::string_view key, std::string_view value) override;
    [[nodiscard]] Stored setBoolean(std::string_view key, bool value) override;
    [[nodiscard]] Stored setInteger(std::string_view key, std::int64_t value) override;
    [[nodiscard]] Stored setNumber(std::string_view key, double value) override;
    [[nodiscard]] Stored setData(std::string_view key, const Bytes& value) override;
    [[nodiscard]] Stored remove(std::string_view key) override;

    [[nodiscard]] std::vector<std::string> keys() const override;

private:
    /// By key, without escapes but with the "@" marks of the types; none for a value no reader here understands.
    using Values = std::map<std::string, std::optional<std::string>, std::less<>>;

    [[nodiscard]] std::expected<std::string, std::string> readFile() const;
    [[nodiscard]] Stored change(std::string_view key, const std::optional<std::string>& escapedValue);
    [[nodiscard]] Stored write(std::string_view content);
    [[nodiscard]] const std::string* stored(std::string_view key) const;

    FileSystem& files_;
    std::filesystem::path path_;
    Values values_;
    std::optional<std::string> problem_;
};

}  // namespace tessary
